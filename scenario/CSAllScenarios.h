#pragma once

#include "scenario/CSScenario.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

// The set of all models, the reader of model files, and the preparation of all models.
//
// Grammar of a model file:
//     file = header { declaration } "}" ;   header = { line } "Scenarios" ... "{" NAME "," ;
//     declaration = "CONSTANT" "(" NAME NUMBER ")" | KIND "(" model ")" ;
//     KIND = "PrimitiveState" | "PrimitiveEvent" | "CompositeState" | "CompositeEvent" ;
// Declarations start on a line of their own and run to the line on which their parentheses balance.
class CS_EXPORT CSAllScenarios
{
public:
    CSAllScenarios();
    CSAllScenarios(const CSAllScenarios&) = delete;
    CSAllScenarios(CSAllScenarios&&) = delete;
    CSAllScenarios& operator=(const CSAllScenarios&) = delete;
    CSAllScenarios& operator=(CSAllScenarios&&) = delete;
    virtual ~CSAllScenarios();

    // Adds the models of one file. A file that cannot be opened adds none; an unknown declaration
    // is reported on standard error and skipped. Throws std::out_of_range where text is cut at a
    // position that does not exist.
    void read(
        std::string fileName,
        std::map<std::string, double> constants,
        std::map<std::string, int> alarmLevels);
    // Reads one "CONSTANT" declaration into the constants table.
    void readConstants(std::string text);

    void print() const;

    // The per-model step of the same name, on every model in the table.
    void classifyConstraints() const;
    void fillConstraintsConstants() const;
    // Replaces calls of declared agent operators in every model by the operators' bodies. Types are
    // matched with the catalogue of object types.
    void rewriteAgentOperator(
        const std::vector<std::shared_ptr<scenariomatch::AgentOperator>>& declared) const;
    // Fills m_parents and chooses trigger and skip index of every used model; reports models that
    // contain themselves and clears their used flag. Calls of the declared operators count as what
    // rewriteAgentOperator makes of them.
    void createModelTree(
        const std::vector<std::shared_ptr<scenariomatch::AgentOperator>>& declared = {});

    std::string m_name;
    // Models by kind keyword, in reading order.
    std::map<std::string, std::vector<std::shared_ptr<CSScenario>>> m_scenariosByKind;
    // The constants table of the file that is being read, or was read last.
    std::map<std::string, double> m_constants;
    // Under every model name, each model that uses it as a component, once, in reading order.
    std::map<std::string, std::vector<std::shared_ptr<CSScenario>>> m_parents;

private:
    void readText(
        const std::string& fileName,
        const std::string& content,
        const std::map<std::string, int>& alarmLevels);
};
