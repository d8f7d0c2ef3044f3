#pragma once

#include "engine/CSEngine.h"
#include "tests/reference/RecognitionLog.h"
#include "tests/reference/ReferenceMatcher.h"
#include "tests/reference/Scene.h"
#include "tests/reference/TestOperators.h"

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace scenariomatch
{

// The declarations of a model file, and which of its models are used.
struct ModelSet
{
    std::string declarations;
    std::vector<std::string> used;
    // The flavour of the operator "!", which has one name alone.
    Flavour negation = Flavour::Plain;
};

// The engine and the reference matcher side by side: the same models and frames, separate objects.
//
//     Duel duel({modelText, {"Inside", "Enters"}});
//     duel.configure({.prolongation = 1.0});
//     duel.step({.number = 1, .seconds = 100.0, .actors = {{0, "Person", {}}}});
//     EXPECT_EQ(duel.difference(Duel::Look::Everywhere), "");
class Duel
{
public:
    struct Settings
    {
        double prolongation = 1.0;
        double timeSearch = 600.0;
        double bayesianRatio = 1.0;
        int historySize = 2;

        std::string text() const;
    };

    // Looking at pseudo-agents and candidates may have the engine make what it has put off, so that
    // only some frames are looked at everywhere.
    enum class Look : std::uint8_t {
        AtResults,
        Everywhere,
    };

    explicit Duel(const ModelSet& models);
    Duel(const Duel&) = delete;
    Duel(Duel&&) = delete;
    Duel& operator=(const Duel&) = delete;
    Duel& operator=(Duel&&) = delete;
    ~Duel();

    void configure(const Settings& settings);

    // Whether both sides tell their steps, which are compared then.
    void observe(bool isObserved);

    // See ReferenceMatcher::m_mostWork.
    void limitWork(int steps) { m_reference->m_mostWork = steps; }

    void enterConstant(const SceneObject& object);
    // False, and the duel is over, when the frame takes the reference too many steps.
    bool step(const SceneFrame& frame);
    // What differs between the two sides, and in which way; empty when nothing does.
    std::string difference(Look look) const;

    // How many instances have been recognised and are alive.
    std::size_t alive() const { return m_reference->m_recognised.size(); }

    const ReferenceMatcher& reference() const { return *m_reference; }

private:
    void setUp(CSEngine& engine, const std::string& folder);
    void enterActor(const SceneObject& actor, int frame);

    std::vector<std::unique_ptr<TestOperator>> m_operators;
    std::unique_ptr<CSEngine> m_engine;
    // Holds the reference's models and nothing else.
    std::unique_ptr<CSEngine> m_models;
    std::unique_ptr<ReferenceMatcher> m_reference;
    CallRecord m_engineCalls;
    CallRecord m_referenceCalls;
    RecognitionLog m_engineLog;
    RecognitionLog m_referenceLog;
    LoggingObserver m_observer{m_engineLog};
    std::set<std::string> m_lookedUpByPureOperators;
};

} // namespace scenariomatch
