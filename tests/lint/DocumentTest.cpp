// docs/diagnostics.md names every message; its wrong examples give just that message, its right
// ones none.

#include "app/CheckCommand.h"
#include "lint/Diagnostic.h"
#include "types/TextFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

struct Entry
{
    std::vector<std::string> wrong;
    std::vector<std::string> right;
};

// The examples below every heading of the third level.
std::map<std::string, Entry> entriesOf(const std::string& document)
{
    std::map<std::string, Entry> entries;
    std::istringstream lines(document);
    std::string line;
    std::string name;
    std::vector<std::string>* examples = nullptr;
    while (std::getline(lines, line)) {
        if (line.starts_with("### ")) {
            name = line.substr(4);
        } else if (line == "```wrong" || line == "```right") {
            examples = line == "```wrong" ? &entries[name].wrong : &entries[name].right;
            examples->emplace_back();
        } else if (line == "```") {
            examples = nullptr;
        } else if (examples != nullptr) {
            examples->back() += line + "\n";
        }
    }
    return entries;
}

// A small project; an example replaces files of it, or the declarations of its models.
class SampleProject
{
public:
    SampleProject()
        : m_folder(std::filesystem::temp_directory_path() / "lint-document-example")
    {
        std::filesystem::remove_all(m_folder);
    }

    SampleProject(const SampleProject&) = delete;
    SampleProject(SampleProject&&) = delete;
    SampleProject& operator=(const SampleProject&) = delete;
    SampleProject& operator=(SampleProject&&) = delete;

    ~SampleProject() { std::filesystem::remove_all(m_folder); }

    // The names of what is found in the example.
    std::vector<std::string> check(const std::string& example)
    {
        std::map<std::string, std::string> files = defaults();
        takeFiles(example, files);
        if (files["settings.txt"].empty()) {
            files["settings.txt"] = settingsOf(files["models.txt"]);
        }
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directory(m_folder);
        for (const auto& [name, text] : files) {
            std::ofstream(m_folder / name, std::ios::binary) << text;
        }
        CheckOptions options;
        options.parameterFile = (m_folder / "parameters.yaml").string();
        options.format = DiagnosticFormat::Json;
        if (files.contains("tracks.jsonl")) {
            options.sample.tracks = (m_folder / "tracks.jsonl").string();
        }
        std::ostringstream out;
        std::ostringstream talk;
        runCheck(options, out, talk);
        std::vector<std::string> names;
        const nlohmann::json document = nlohmann::json::parse(out.str());
        for (const auto& found : document["diagnostics"]) {
            names.push_back(found["name"]);
        }
        return names;
    }

private:
    static std::map<std::string, std::string> defaults()
    {
        const std::string model = "PrimitiveState (InZone,\n"
                                  "    PhysicalObjects((p : Person)(z : Zone))\n"
                                  "    Constraints((p inside z)))\n";
        return {
            {"models.txt", modelFile(model)},
            {"settings.txt", ""},
            {"engine.txt",
             "List {\nExample,\nincludeEngine(settings.txt)\nincludeScenario(models.txt)\n}\n"},
            {"constants.txt", "EnvVars {\nExample,\nConstant (Limit 2)\n}\n"},
            {"objects.txt",
             "class Person {\nconstant false;\n}\nclass Zone {\nconstant true;\n}\n"},
            {"context.xml",
             "<Context name=\"example\">\n  <Element kind=\"zone\" name=\"Door\" shape=\"polygon\">"
             "<Vertex x=\"0\" y=\"0\"/><Vertex x=\"4\" y=\"0\"/><Vertex x=\"4\" y=\"4\"/></Element>"
             "\n</Context>\n"},
            {"parameters.yaml",
             "%YAML:1.0\n---\nscenarioRecognitionModelFileName: \"engine.txt\"\n"
             "scenarioRecognitionObjectDescription: \"objects.txt\"\nRHMContext: "
             "\"context.xml\"\n"}};
    }

    static std::string modelFile(const std::string& declarations)
    {
        return "Scenarios {\nExample,\n" + declarations + "}\n";
    }

    static void takeFiles(const std::string& example, std::map<std::string, std::string>& files)
    {
        std::istringstream lines(example);
        std::string line;
        std::string name;
        std::string declarations;
        while (std::getline(lines, line)) {
            if (line.starts_with("file: ")) {
                name = line.substr(6);
                files[name].clear();
            } else if (name.empty()) {
                declarations += line + "\n";
            } else {
                files[name] += line + "\n";
            }
        }
        if (!declarations.empty()) {
            files["models.txt"] = modelFile(declarations);
        }
    }

    // Settings that use all models.
    static std::string settingsOf(const std::string& models)
    {
        const std::regex head(R"(\n(?:Primitive|Composite)\w+ ?\((\w+))");
        std::string names;
        for (std::sregex_iterator i(models.begin(), models.end(), head), end; i != end; ++i) {
            names += (names.empty() ? "" : ",") + (*i)[1].str();
        }
        return "Engine {\nExample,\nEnvVars(constants.txt)\nUsedModels(" + names + ")\n}\n";
    }

    std::filesystem::path m_folder;
};

TEST(DiagnosticsDocument, ExplainsEveryMessageWithExamplesThatHold)
{
    const auto document = readTextFile(SCENARIOMATCH_TEST_DATA "/../../docs/diagnostics.md");
    ASSERT_TRUE(document);
    std::map<std::string, Entry> entries = entriesOf(*document);
    SampleProject project;
    for (const lint::Rule& rule : lint::rules()) {
        const std::string name(rule.name);
        SCOPED_TRACE(name);
        const Entry entry = entries[name];
        EXPECT_FALSE(entry.wrong.empty());
        EXPECT_FALSE(entry.right.empty());
        for (const std::string& example : entry.wrong) {
            EXPECT_EQ(project.check(example), std::vector<std::string>{name}) << example;
        }
        for (const std::string& example : entry.right) {
            EXPECT_EQ(project.check(example), std::vector<std::string>{}) << example;
        }
    }
    EXPECT_EQ(entries.size(), lint::rules().size());
}

TEST(DiagnosticRules, StandInTheOrderOfTheirNames)
{
    EXPECT_TRUE(std::is_sorted(
        lint::rules().begin(), lint::rules().end(), [](const auto& left, const auto& right) {
            return left.name < right.name;
        }));
}

} // namespace

} // namespace scenariomatch
