// The repair of event files: what it writes is well-formed, and whole when it is repaired again.
#include "app/EventFileRepair.h"
#include "fuzz/FuzzFile.h"

#include <QXmlStreamReader>

#include <sstream>

namespace
{

bool isWellFormed(const std::string& text)
{
    QXmlStreamReader reader(QByteArray::fromStdString(text));
    while (!reader.atEnd()) {
        reader.readNext();
    }
    return !reader.hasError();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace scenariomatch;
    std::istringstream in{std::string(textOf(data, size))};
    std::ostringstream out;
    std::ostringstream talk;
    const EventFileRepair found = repairEventFile(in, "events.xml", out, talk);
    if (!found.problem.empty()) {
        return 0;
    }
    std::istringstream repaired(out.str());
    if (!isWellFormed(out.str()) || !repairEventFile(repaired, "events.xml", talk, talk).isWhole) {
        __builtin_trap();
    }
    return 0;
}
