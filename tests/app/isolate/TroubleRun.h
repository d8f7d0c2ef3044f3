#pragma once

#include "ProgramRun.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace scenariomatch
{

// A run on a model that asks the operator `trouble` about everybody: person 1 is there in all ten
// frames, person 99, who makes the trouble, in those of the range. A car, which nobody asks about,
// is there all the time.
class TroubleRun
{
public:
    TroubleRun(const std::string& trouble, int first, int last)
        : m_folder(temporary("trouble"))
    {
        std::filesystem::remove_all(m_folder);
        std::filesystem::copy(SCENARIOMATCH_TEST_DATA "/app/trouble", m_folder);
        std::ofstream(m_folder + "/models.txt")
            << "Scenarios {\nTrouble,\nPrimitiveState (Seen,\n"
               "    PhysicalObjects((p : Person))\n    Constraints((trouble(p->ID, "
            << numberOf(trouble) << ")))\n)\n}\n";
        std::ofstream tracks(m_folder + "/tracks.jsonl");
        for (int frame = 1; frame <= 10; ++frame) {
            tracks << R"({"frame":)" << frame << R"(,"time":"2026-05-04T10:00:0)" << frame - 1
                   << R"(.000","actors":[{"id":7,"type":"CAR","position":[9,9,0]})"
                   << R"(,{"id":1,"type":"PERSON","position":[0,0,0]})";
            if (frame >= first && frame <= last) {
                tracks << R"(,{"id":99,"type":"PERSON","position":[0,0,0]})";
            }
            tracks << "]}\n";
        }
    }

    std::string arguments() const
    {
        return "run --params " + m_folder + "/params.yaml --tracks " + m_folder +
               "/tracks.jsonl --set OperatorPluginPath=" TROUBLE_FOLDER " ";
    }

    Outcome run(const std::string& options, const std::string& before = "") const
    {
        return runProgram(arguments() + options, before);
    }

private:
    // What the operator's second argument says.
    static std::size_t numberOf(const std::string& trouble)
    {
        const std::vector<std::string> troubles{
            "nothing", "crash", "abort", "exit", "hang", "throw", "word", "slow"};
        const auto found = std::find(troubles.begin(), troubles.end(), trouble);
        return static_cast<std::size_t>(found - troubles.begin());
    }

    std::string m_folder;
};

} // namespace scenariomatch
