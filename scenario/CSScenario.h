#pragma once

#include "scenario/CComponent.h"
#include "scenario/CConstraint.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace scenariomatch
{
class SharedConstants;
}

// One scenario model: what it is called, whom it involves, what it is made of and what must hold.
//
//     PrimitiveState(Inside[0.5],
//         PhysicalObjects((p : Person)(z : Zone))
//         Constraints((p->Position in z->Vertices))
//         Alarm((Level : URGENT)(Text : Somebody is inside)))
//
// Filled once by read, prepared once (CSAllScenarios), then only looked at. Owns its components and
// constraints.
class CS_EXPORT CSScenario
{
public:
    CSScenario() = default;
    CSScenario(const CSScenario&) = delete;
    CSScenario(CSScenario&&) = delete;
    CSScenario& operator=(const CSScenario&) = delete;
    CSScenario& operator=(CSScenario&&) = delete;
    virtual ~CSScenario();

    // Fills a fresh model from the text of one declaration. The tables are those of the model file:
    // constants (the threshold of a model without brackets is the constant named like its kind,
    // else 0) and alarm levels. Throws std::out_of_range where text is cut at a position that does
    // not exist.
    void read(
        std::string text,
        const std::string& kind,
        std::map<std::string, double> constants,
        std::map<std::string, int> alarmLevels);
    // The same for one of many models, which share the constants.
    void read(
        const std::string& text,
        const std::string& kind,
        scenariomatch::SharedConstants& constants,
        const std::map<std::string, int>& alarmLevels);

    // The section readers, each given the body of its section.
    void readPhysicalObjects(std::string body);
    void readComponents(std::string body);
    void readConstraints(std::string body);
    void readAlarm(std::string body, std::map<std::string, int> alarmLevels);
    void readMiscellaneous(std::string body);

    // Writes the model to standard output.
    void print() const;

    // Preparation, per model; see CConstraint. Constraints are filled from the constants that the
    // model was read with.
    void classifyConstraints();
    void fillConstraintsConstants();

    std::int32_t m_id = 0;
    // "PrimitiveState", "PrimitiveEvent", "CompositeState" or "CompositeEvent".
    std::string m_kind;
    std::string m_name;
    std::string m_alarmText;
    std::map<std::string, std::vector<std::string>> m_variablesByType;
    // Component variables have the type name "Component".
    std::map<std::string, std::string> m_variableTypes;
    // Variable by position, in order of declaration: what arguments of a component are passed to.
    std::map<int, std::string> m_physicalObjects;
    std::vector<std::unique_ptr<CComponent>> m_components;
    std::vector<std::unique_ptr<CConstraint>> m_constraints;
    // Clause name to key to value.
    std::map<std::string, std::map<std::string, std::string>> m_miscellaneous;
    std::string m_alarmLevelName;
    std::int32_t m_alarmLevel = 0;
    // Least confidence at which an instance is accepted.
    double m_confidenceThreshold = 0.0;

    // Whether the model takes part in recognition; kept by the engine's checks.
    bool m_used = false;
    // The constants that the model was read with; never null. Models read with the same constants
    // share the table.
    std::shared_ptr<const std::map<std::string, double>> m_constants =
        std::make_shared<const std::map<std::string, double>>();
    // The component whose recognition completes a candidate, and the one that is looked up first
    // among what has been recognised; -1 when there is none. Set by createModelTree.
    std::int32_t m_triggerIndex = -1;
    std::int32_t m_skipIndex = -1;

    // The id that the next model gets; never reset.
    static std::int32_t m_number;

    // Physical objects and their types may not have longer names; a longer one is text without its
    // separator.
    static constexpr std::size_t kMaximumNameLength = 255;

private:
    void readSection(
        const std::string& keyword,
        const std::string& body,
        const std::map<std::string, int>& alarmLevels);
};
