#pragma once

#include "engine/CSEngine.h"
#include "tests/reference/RecordingOperators.h"
#include "tests/reference/ReferenceMatcher.h"

#include <memory>
#include <string>
#include <vector>

namespace scenariomatch
{

// The engine and the reference matcher side by side: the same models and frames, separate objects.
//
//     Duel duel(modelText, {"Inside", "Enters"});
//     duel.enterConstant({1, "Zone", 2.0});
//     duel.step({.number = 1, .seconds = 100.0, .actors = {{0, "Person", 1.0}}});
//     EXPECT_EQ(duel.difference(), "");
class Duel
{
public:
    struct Object
    {
        int host;
        std::string type;
        // Its attribute "P"; none is set for NaN.
        double position;
    };

    struct Frame
    {
        int number = 0;
        double seconds = 0.0;
        double milliseconds = 0.0;
        std::vector<Object> actors;
    };

    struct Settings
    {
        double prolongation = 1.0;
        double timeSearch = 600.0;
        double bayesianRatio = 1.0;
        int historySize = 2;
    };

    // Reads the models, which are the declarations of a model file, of which those named are used.
    Duel(const std::string& declarations, const std::vector<std::string>& usedModels);
    Duel(const Duel&) = delete;
    Duel(Duel&&) = delete;
    Duel& operator=(const Duel&) = delete;
    Duel& operator=(Duel&&) = delete;
    ~Duel();

    void configure(const Settings& settings);
    void enterConstant(const Object& object);
    void step(const Frame& frame);
    // What differs between the two sides, and in which way; empty when nothing does.
    std::string difference() const;

    // How many instances have been recognised and are alive.
    std::size_t alive() const { return m_reference->m_recognised.size(); }

    // How much the last frame has cost the reference.
    int work() const { return m_reference->m_tested + m_reference->m_completions; }

private:
    void setUp(CSEngine& engine, const std::string& engineFile);
    void enterActors(const Frame& frame);

    std::vector<std::unique_ptr<RecordingOperator>> m_operators;
    std::unique_ptr<CSEngine> m_engine;
    // Holds the reference's models and nothing else.
    std::unique_ptr<CSEngine> m_models;
    std::unique_ptr<ReferenceMatcher> m_reference;
    CallRecord m_engineCalls;
    CallRecord m_referenceCalls;
};

} // namespace scenariomatch
