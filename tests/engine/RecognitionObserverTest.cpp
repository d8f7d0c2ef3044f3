#include "engine/RecognitionObserver.h"

#include "engine/FrameView.h"
#include "tests/engine/EngineFixture.h"

#include <stdexcept>

namespace scenariomatch
{

namespace
{

using Lines = std::vector<std::string>;

std::string bindingsText(const CConstraint::Bindings& bindings)
{
    std::string text;
    for (const auto& [variable, agent] : bindings) {
        text += " " + variable + "=" + (agent ? std::to_string(agent->m_ID) : "none");
    }
    return text;
}

// Writes down what it is told.
class Notes : public RecognitionObserver
{
public:
    void candidateTested(const CSScenario& model, const CConstraint::Bindings& bindings) override
    {
        m_lines.push_back("tested " + model.m_name + bindingsText(bindings));
    }

    void constraintFalse(
        const CSScenario& model,
        const CConstraint::Bindings& bindings,
        std::size_t constraint) override
    {
        m_lines.push_back(
            "false " + std::to_string(constraint) + " " + model.m_name + bindingsText(bindings));
    }

    void notConfident(
        const CSScenario& model, const CConstraint::Bindings& bindings, double confidence) override
    {
        m_lines.push_back(
            "not confident " + std::to_string(confidence) + " " + model.m_name +
            bindingsText(bindings));
    }

    void instanceNew(const CSScenarioInstance& instance) override
    {
        m_lines.push_back(
            "new " + std::to_string(instance.m_id) + " " + instance.m_scenario->m_name);
    }

    void instanceExtended(const CSScenarioInstance& instance) override
    {
        m_lines.push_back(
            "extended " + std::to_string(instance.m_id) + " to " +
            std::to_string(instance.m_end->m_frameID));
    }

    void completionRejected(
        const CSScenarioInstance& candidate,
        std::size_t component,
        const CSScenarioInstance& recognised,
        CompletionRejection reason) override
    {
        const Lines reasons{"same instance", "different participant", "object twice"};
        m_lines.push_back(
            "rejected " + candidate.m_scenario->m_name + " " + std::to_string(component) + " " +
            std::to_string(recognised.m_id) + ": " + reasons.at(static_cast<std::size_t>(reason)));
    }

    void instanceExpired(const CSScenarioInstance& instance) override
    {
        m_lines.push_back("expired " + std::to_string(instance.m_id));
    }

    Lines take()
    {
        Lines lines;
        lines.swap(m_lines);
        return lines;
    }

private:
    Lines m_lines;
};

class EngineRecognitionObserver : public EngineFixture
{
protected:
    EngineRecognitionObserver() { m_engine.setObserver(&m_notes); }

    Notes m_notes;
};

const std::string kLowAndHigh =
    "PrimitiveState(Low, PhysicalObjects((p : Person)) Constraints((2 above p->P)))\n"
    "PrimitiveState(High, PhysicalObjects((p : Person)) Constraints((p->P above 2)))\n";

} // namespace

TEST_F(EngineRecognitionObserver, IsToldOfCandidatesAndFalseConstraints)
{
    readModels(kLowAndHigh, "Low,High");
    runFrame(1, 1.0, {{7, "Person", 1.0}});
    EXPECT_EQ(
        m_notes.take(),
        Lines({"tested High p=7", "false 0 High p=7", "tested Low p=7", "new 0 Low"}));
}

// Throws in the first composite level.
class Impatient : public RecognitionObserver
{
public:
    void
    candidateTested(const CSScenario& model, const CConstraint::Bindings& /*bindings*/) override
    {
        if (model.m_kind == "PrimitiveEvent") {
            throw std::runtime_error("enough");
        }
    }
};

TEST_F(EngineRecognitionObserver, LeavesNothingForTheNextFrameWhenItThrows)
{
    Impatient impatient;
    m_engine.setObserver(&impatient);
    readModels(
        "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
        "PrimitiveEvent(Event, PhysicalObjects((p : Person))"
        " Components((c : PrimitiveState There(p))))\n",
        "There,Event");
    EXPECT_THROW(runFrame(1, 1.0, {{7, "Person", 0.0}, {8, "Person", 0.0}}), std::runtime_error);
    m_engine.setObserver(nullptr);
    runFrame(2, 2.0, {{9, "Person", 0.0}});
    EXPECT_EQ(endedNow(), Lines({"2 There 2..2 p=9", "3 Event 2..2 c=2 p=9"}));
    EXPECT_EQ(m_engine.statistics().tested, 2);
}

TEST_F(EngineRecognitionObserver, IsToldOfExtensionAndExpiry)
{
    readModels(kLowAndHigh, "Low");
    m_engine.m_constProlongation = 1.0;
    m_engine.setConstTimeSearch(2.0);
    runFrame(1, 1.0, {{7, "Person", 1.0}});
    m_notes.take();
    runFrame(2, 2.0, {{7, "Person", 1.0}});
    EXPECT_EQ(m_notes.take(), Lines({"tested Low p=7", "extended 0 to 2"}));
    runFrame(3, 5.0, {});
    EXPECT_EQ(m_notes.take(), Lines({"expired 0"}));
}

TEST_F(EngineRecognitionObserver, IsToldOfMissingConfidence)
{
    readModels(
        "PrimitiveState(Sure[0.5], PhysicalObjects((p : Person)) Constraints((sure(p->P))))\n",
        "Sure");
    runFrame(1, 1.0, {{7, "Person", 0.25}});
    EXPECT_EQ(m_notes.take(), Lines({"tested Sure p=7", "not confident 0.250000 Sure p=7"}));
}

TEST_F(EngineRecognitionObserver, IsToldWhyACompletionIsRejected)
{
    readModels(
        kLowAndHigh + "CompositeEvent(Rise, PhysicalObjects((q : Person))"
                      " Components((a : PrimitiveState Low(q))(b : PrimitiveState High(q))))\n"
                      "CompositeEvent(Two, PhysicalObjects((q : Person)(r : Person))"
                      " Components((a : PrimitiveState Low(q))(b : PrimitiveState High(r))))\n"
                      "CompositeEvent(Twice, PhysicalObjects((q : Person))"
                      " Components((a : PrimitiveState High(q))(b : PrimitiveState High(q))))\n",
        "Low,High,Rise,Two,Twice");
    runFrame(1, 1.0, {{7, "Person", 1.0}, {8, "Person", 3.0}});
    m_notes.take();
    runFrame(2, 2.0, {{7, "Person", 3.0}});
    Lines rejections;
    for (const std::string& line : m_notes.take()) {
        if (line.rfind("rejected", 0) == 0) {
            rejections.push_back(line);
        }
    }
    // List: 2 High (7), 0 High (8), 1 Low (7), then what frame 1 made of them.
    EXPECT_EQ(
        rejections,
        Lines(
            {"rejected Twice 0 3: same instance",
             "rejected Twice 0 0: different participant",
             "rejected Two 0 1: object twice"}));
}

TEST_F(EngineRecognitionObserver, ChangesNothing)
{
    const std::string models =
        kLowAndHigh + "CompositeEvent(Rise, PhysicalObjects((q : Person))"
                      " Components((a : PrimitiveState Low(q))(b : PrimitiveState High(q))))\n";
    readModels(models, "Low,High,Rise");
    Lines seen;
    for (const int shift : {0, 100}) {
        m_engine.setObserver(shift == 0 ? &m_notes : nullptr);
        runFrame(shift + 1, 10000.0 * shift + 1.0, {{7, "Person", 1.0}, {8, "Person", 3.0}});
        runFrame(shift + 2, 10000.0 * shift + 2.0, {{7, "Person", 3.0}});
        std::string names;
        for (const auto& instance : m_engine.recognisedScenarios()) {
            names += instance->m_scenario->m_name + " ";
        }
        seen.push_back(names);
    }
    EXPECT_EQ(seen.at(0), seen.at(1));
    EXPECT_NE(seen.at(0).find("Rise"), std::string::npos);
}

TEST_F(EngineRecognitionObserver, DoesNothingUnlessOverridden)
{
    RecognitionObserver silent;
    m_engine.setObserver(&silent);
    readModels(kLowAndHigh, "Low,High");
    runFrame(1, 1.0, {{7, "Person", 1.0}});
    EXPECT_EQ(alive(), Lines({"0 Low 1..1 p=7"}));
}

namespace
{

// Does without the candidates that recognition passes over.
class BriefNotes : public Notes
{
public:
    bool needsAllCandidates() const override { return false; }

    void frameStarted(FrameView& view, const CSTimeStamp& now) override
    {
        m_frames.push_back(
            std::to_string(now.m_frameID) + ": " + std::to_string(view.size()) + " agents, " +
            std::to_string(view.ofType(view.typeNumber("Zone")).size()) + " zones");
    }

    Lines m_frames;
};

} // namespace

TEST_F(EngineRecognitionObserver, IsSparedCandidatesThatItDoesNotNeed)
{
    BriefNotes notes;
    m_engine.setObserver(&notes);
    addOperator("over", [](const auto& arguments) {
        const auto number = std::dynamic_pointer_cast<CSDouble>(arguments.at(0));
        return std::make_shared<CSBool>(number && number->m_value > 2.0);
    }).m_description.m_pure = true;
    publishOperators();
    readModels(
        "PrimitiveState(Sure, PhysicalObjects((p : Person)) Constraints((over(p->P, 2))"
        "(p->P above 3)))\n",
        "Sure");
    runFrame(1, 1.0, {{6, "Person", 1.0}, {7, "Person", 2.5}, {8, "Person", 4.0}});
    EXPECT_EQ(
        notes.take(),
        Lines({"tested Sure p=7", "false 1 Sure p=7", "tested Sure p=8", "new 0 Sure"}));
}

TEST_F(EngineRecognitionObserver, IsShownEachFrameBeforeAnythingIsTested)
{
    BriefNotes notes;
    m_engine.setObserver(&notes);
    readModels(kLowAndHigh, "Low,High");
    enterConstant({0, "Zone", 5.0});
    runFrame(1, 1.0, {{7, "Person", 1.0}});
    runFrame(2, 2.0, {});
    EXPECT_EQ(notes.m_frames, Lines({"1: 2 agents, 1 zones", "2: 1 agents, 1 zones"}));
}

} // namespace scenariomatch
