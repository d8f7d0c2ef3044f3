#pragma once

#include "scenario/CSScenario.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

// One recognised or partially recognised occurrence of a model.
//
// Always held by std::shared_ptr; agents and time stamps are shared, never copied.
class CS_EXPORT CSScenarioInstance
{
public:
    CSScenarioInstance() = default;
    CSScenarioInstance(
        std::shared_ptr<CSScenario> scenario,
        std::shared_ptr<CSTimeStamp> start,
        std::shared_ptr<CSTimeStamp> end);
    // Copies everything but the text, which stays empty.
    CSScenarioInstance(const CSScenarioInstance& other);
    CSScenarioInstance(CSScenarioInstance&&) = delete;
    CSScenarioInstance& operator=(const CSScenarioInstance&) = delete;
    CSScenarioInstance& operator=(CSScenarioInstance&&) = delete;
    virtual ~CSScenarioInstance();

    // Verifies the model's constraints in order, up to the first that is false, and sets the
    // confidence to the product of theirs; 1.0 when one is false.
    bool recognisePrimitiveState();
    // The same; returns how many constraints hold before the first false one.
    std::size_t verifyConstraints();

    std::shared_ptr<CSScenario> m_scenario;
    std::shared_ptr<CSTimeStamp> m_start;
    std::shared_ptr<CSTimeStamp> m_end;
    double m_confidence = 1.0;
    // Number of the recognised instance, and key of its pseudo-agent.
    std::int32_t m_id = 0;
    // Variable to agent; components are bound to pseudo-agents.
    CConstraint::Bindings m_bindings;
    std::string m_text;

    // Seconds for which a recognised instance is kept after its end.
    static double m_const_TimeSearch; // NOLINT(readability-identifier-naming): the interface's name
};
