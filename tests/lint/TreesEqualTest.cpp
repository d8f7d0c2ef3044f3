// For every model file among the tests and the examples the trees of the checker are the engine's.

#include "lint/ModelFile.h"
#include "lint/Source.h"
#include "scenario/CSAllScenarios.h"
#include "types/TextFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

// All model files below a folder, in the order of their names.
std::vector<std::string> modelFiles(const std::string& folder)
{
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const std::string name = entry.path().string();
        const auto text = entry.is_regular_file() ? readTextFile(name) : std::nullopt;
        const bool isText = name.ends_with(".txt") || name.ends_with(".models");
        if (text && isText && text->find("Scenarios {") != std::string::npos) {
            files.push_back(name);
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::string> allModelFiles()
{
    const std::string root = SCENARIOMATCH_TEST_DATA "/../..";
    std::vector<std::string> files = modelFiles(root + "/examples");
    for (const std::string& file : modelFiles(root + "/tests")) {
        files.push_back(file);
    }
    return files;
}

void print(std::ostream& out, const CConstraint& node)
{
    out << '(' << node.m_operatorName << '|' << node.m_value << '|' << node.m_attribute;
    for (const auto& child : node.m_children) {
        print(out, *child);
    }
    out << ')';
}

void print(std::ostream& out, const lint::ConstraintNode& node)
{
    using enum lint::ConstraintNode::Kind;
    out << '('
        << (node.kind == Call        ? node.name.text
            : node.kind == Attribute ? "->"
                                     : "NULL")
        << '|' << (node.kind == Call ? "" : node.name.text) << '|' << node.attribute.text;
    for (const auto& child : node.children) {
        print(out, child);
    }
    out << ')';
}

// The engine's model as text.
std::string textOf(const CSScenario& model)
{
    std::ostringstream out;
    out << model.m_kind << ' ' << model.m_name << '\n';
    for (const auto& [index, variable] : model.m_physicalObjects) {
        out << variable << ' ';
    }
    for (const auto& component : model.m_components) {
        out << "\n"
            << component->m_variable << ':' << component->m_kind << ' ' << component->m_modelName;
        for (const auto& argument : component->m_arguments) {
            out << ',' << argument;
        }
    }
    for (const auto& constraint : model.m_constraints) {
        out << '\n';
        print(out, *constraint);
    }
    out << '\n' << model.m_alarmLevelName << '|' << model.m_alarmText << '\n';
    for (const auto& [name, values] : model.m_miscellaneous) {
        out << name;
        for (const auto& [key, value] : values) {
            out << ' ' << key << '=' << value;
        }
    }
    return out.str();
}

void printClauses(std::ostream& out, const lint::Model& model)
{
    std::map<std::string, std::map<std::string, std::string>> clauses;
    for (const lint::MergeClause& clause : model.clauses) {
        if (clause.isRead) {
            clauses[clause.name.text].clear();
            for (const auto& [key, value] : clause.pairs) {
                clauses[clause.name.text][key.text] = value.text;
            }
        }
    }
    for (const auto& [name, values] : clauses) {
        out << name;
        for (const auto& [key, value] : values) {
            out << ' ' << key << '=' << value;
        }
    }
}

// The checker's model in the same form.
std::string textOf(const lint::Model& model)
{
    std::ostringstream out;
    out << model.kind.text << ' ' << model.name.text << '\n';
    for (const lint::Variable& object : model.objects) {
        out << (object.isRead ? object.name.text + " " : "");
    }
    for (const lint::ModelComponent& component : model.components) {
        out << "\n"
            << component.variable.text << ':' << component.kind.text << ' ' << component.model.text;
        for (const lint::Word& argument : component.arguments) {
            out << ',' << argument.text;
        }
    }
    for (const lint::ModelConstraint& constraint : model.constraints) {
        if (constraint.isRead) {
            out << '\n';
            print(out, *constraint.read);
        }
    }
    out << '\n'
        << (model.alarmLevel ? model.alarmLevel->text : "") << '|'
        << (model.alarmText ? model.alarmText->text : "") << '\n';
    printClauses(out, model);
    return out.str();
}

// The engine's models by kind, as the engine keeps them.
std::string engineText(const CSAllScenarios& scenarios)
{
    std::string text;
    for (const auto& [kind, models] : scenarios.m_scenariosByKind) {
        for (const auto& model : models) {
            text += textOf(*model) + "\n";
        }
    }
    return text;
}

std::string checkerText(const lint::ModelFile& file)
{
    std::map<std::string, std::string> byKind;
    for (const lint::Model& model : file.models) {
        if (model.isRead) {
            byKind[model.kind.text] += textOf(model) + "\n";
        }
    }
    std::string text;
    for (const auto& [kind, models] : byKind) {
        text += models;
    }
    return text;
}

const std::set<std::string> kOperators = {
    "=",     "!=",       "<",        "<=",    ">",      ">=",    "and",  "or",       "!",
    "+",     "-",        "*",        "/",     "inside", "in",    "near", "distance", "before",
    "meets", "overlaps", "duration", "close", "gap",    "value", "speed"};

TEST(Trees, AreTheEnginesForEveryModelFile)
{
    const std::vector<std::string> files = allModelFiles();
    ASSERT_GT(files.size(), 60U);
    for (const std::string& name : files) {
        SCOPED_TRACE(name);
        CSAllScenarios engine;
        try {
            engine.read(name, {}, {});
        } catch (const std::out_of_range&) {
            continue; // The engine makes nothing of it.
        }
        const lint::Source source(name, *readTextFile(name));
        lint::Diagnostics found;
        const lint::ModelFile file = lint::readModelFile(
            source, std::make_shared<const std::vector<lint::Constant>>(), kOperators, found);
        EXPECT_EQ(checkerText(file), engineText(engine));
    }
}

} // namespace

} // namespace scenariomatch
