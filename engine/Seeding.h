#pragma once

#include "engine/CSScenarioInstance.h"

#include <cstddef>
#include <cstdint>
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
    // `variables` are those that instances of the model bind, by name.
    Seeding(
        std::shared_ptr<CSScenario> parent,
        const CSScenario& model,
        std::span<const std::string> variables);

    const std::shared_ptr<CSScenario>& parent() const { return m_parent; }

    // How many of the parent's components the instance fills.
    int filled() const { return m_filled; }

    // A candidate from `now` on. Takes up one that it made in an earlier frame, where nobody has
    // kept it. The agents are those of the variables, null where one is not bound.
    using Agents = std::span<const std::shared_ptr<CSAgent>* const>;
    std::shared_ptr<CSScenarioInstance> seed(
        Agents agents,
        const std::shared_ptr<CSAgent>& component,
        const std::shared_ptr<CSTimeStamp>& now,
        std::uint64_t frame);

private:
    static constexpr std::size_t kNobody = static_cast<std::size_t>(-1);
    static constexpr std::size_t kComponent = kNobody - 1;

    struct Binding
    {
        std::string variable;
        // The place of the recognised instance's variable, or one of those below.
        std::size_t source = kNobody;
    };

    void bind(const std::string& variable, std::size_t source);
    static const std::shared_ptr<CSAgent>&
    sourceOf(const Binding& binding, Agents agents, const std::shared_ptr<CSAgent>& component);
    std::shared_ptr<CSScenarioInstance> fresh(std::uint64_t frame);
    std::shared_ptr<CSScenarioInstance> unbound() const;

    std::shared_ptr<CSScenario> m_parent;
    int m_filled = 0;
    // By variable name.
    std::vector<Binding> m_bindings;
    // What was made so far, to be used again, and how much of it this frame has.
    std::vector<std::shared_ptr<CSScenarioInstance>> m_instances;
    std::uint64_t m_frame = 0;
    std::size_t m_used = 0;
};

} // namespace scenariomatch
