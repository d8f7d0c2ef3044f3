#pragma once

#include "engine/RecognisedScenarios.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace scenariomatch
{

// How a recognised instance of one model seeds a candidate of one of its parents, worked out once:
// the components of the parent that are instances of the model, but for the one that is looked up,
// are bound to the instance's pseudo-agent, and the arguments of these components to the instance's
// agents.
class CS_EXPORT Seeding
{
public:
    // `variables` are those that instances of the model bind, by name, its objects among them.
    Seeding(
        std::shared_ptr<CSScenario> parent,
        const CSScenario& model,
        std::span<const std::string> variables);

    const std::shared_ptr<CSScenario>& parent() const { return m_parent; }

    // How many of the parent's components the instance fills.
    int filled() const { return m_filled; }

    // Whether it fills the component without which nothing is looked up.
    bool isTriggered() const;

    // What candidates bind, by name.
    const std::vector<std::string>& variables() const { return m_variables; }

    // Whom a candidate binds the variable at this place to, empty for nobody.
    const std::shared_ptr<CSAgent>&
    agent(std::size_t place, const RecognisedEntry& recognised) const;
    // The same one's identifier, where the instance is whole.
    int identifier(std::size_t place, const RecognisedEntry& recognised) const;

    // Whom a candidate binds a variable to; null where it does not bind it.
    const std::shared_ptr<CSAgent>*
    agentOf(const std::string& variable, const RecognisedEntry& recognised) const;

    // A candidate from `now` on.
    std::shared_ptr<CSScenarioInstance>
    seed(const RecognisedEntry& recognised, const std::shared_ptr<CSTimeStamp>& now) const;

private:
    static constexpr std::size_t kComponent = static_cast<std::size_t>(-1);

    // A variable of the recognised instance and its place among all; or its pseudo-agent.
    struct Source
    {
        std::size_t place = kComponent;
        std::string variable;
    };

    void bind(const std::string& variable, Source source);

    std::shared_ptr<CSScenario> m_parent;
    int m_filled = 0;
    std::vector<std::string> m_variables;
    // Of each of them.
    std::vector<Source> m_sources;
};

} // namespace scenariomatch
