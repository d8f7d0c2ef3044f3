#pragma once

#include "app/manual/CommandTable.h"
#include "app/OptionChecks.h"

#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace scenariomatch
{

// A small program whose help has whatever writers of pages and completions could stumble over.
class ManualExample : public testing::Test
{
protected:
    ManualExample()
        : m_tool("Works", "tool")
    {
        m_tool.add_subcommand("cut", "Cut")->add_subcommand("twice", "Cut \"twice\" for $5");
        CLI::App* const glue = m_tool.add_subcommand("glue", "Glue");
        const Choices<int> glues{{"bone", 1}, {"paste", 2}};
        addChoice(*glue, "--with", m_number, glues, ".like [this]: it's \\ `odd`");
        glue->add_option("--to", m_text, "Where to")->type_name("FILE")->capture_default_str();
        glue->add_option("--in", m_folder, "Where")->type_name("FOLDER")->required();
        glue->add_option("--note", m_notes, "Notes")->type_name("A:B")->allow_extra_args(false);
        glue->add_flag("--dry", m_isDry, "Without glue");
        glue->add_option("PART", m_part, "What")->type_name("FILE");
        glue->add_option("NAME", m_name, "Of the whole")->type_name("");
        glue->footer("Description:\n  Puts two parts\n  together.\n\n"
                     "Environment:\n  GLUE_POT  Where glue is\n\n"
                     "Words:\n  not these\n\nExamples:\n  tool glue '.x'\n  tool glue \\");
        m_program = describeProgram(m_tool);
    }

    const CommandEntry& glue() const { return m_program.commands.back(); }

    CommandEntry m_program;

private:
    CLI::App m_tool;
    int m_number = 0;
    std::string m_text = "-";
    std::string m_folder;
    std::vector<std::string> m_notes;
    bool m_isDry = false;
    std::string m_part;
    std::string m_name;
};

} // namespace scenariomatch
