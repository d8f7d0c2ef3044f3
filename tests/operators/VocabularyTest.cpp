#include "engine/CSEngine.h"
#include "LoadedOperators.h"
#include "scenario/AgentOperatorReader.h"
#include "Walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

std::string textOf(const std::string& fileName)
{
    std::ifstream file(fileName);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// The vocabulary as the engine reads it, on the standard operators.
class Vocabulary : public testing::Test
{
protected:
    void SetUp() override
    {
        CSEngine::h_currentTime = framesUpTo(10);
        for (const LoadedOperator& loaded : loadedOperators()) {
            m_table[loaded.object->m_name] = loaded.object;
        }
        m_text = textOf(CS_SOURCE_FOLDER "/operators/vocabulary.txt");
        testing::internal::CaptureStderr();
        m_declared = readAgentOperators("vocabulary.txt", m_text, m_table);
        m_complaints = testing::internal::GetCapturedStderr();
        m_formerOperators = CConstraint::m_allOperators;
        CConstraint::m_allOperators = m_table;
    }

    void TearDown() override
    {
        CConstraint::m_allOperators = m_formerOperators;
        CSEngine::h_currentTime.clear();
    }

    std::shared_ptr<CSAgent>& bind(const std::string& variable, const std::string& type)
    {
        m_types[variable] = type;
        auto& agent = m_bindings[variable];
        agent = std::make_shared<CSAgent>(static_cast<int>(m_bindings.size()), false);
        agent->setType(std::make_shared<CSString>(type), 0);
        return agent;
    }

    void bindThing(const std::string& variable, const std::string& type, const Value& position)
    {
        const auto history = position->m_history;
        const int frame = position->m_frame;
        bind(variable, type)->set("Position", position, frame);
        position->m_history = history;
    }

    void bindEvent(const std::string& variable, const Value& interval)
    {
        bind(variable, "Component")->set("Interval", interval, 0);
    }

    void bindZone(const std::string& variable, const Value& vertices)
    {
        bind(variable, "Zone")->set("Vertices", vertices, 0);
    }

    void bindWall(const std::string& variable, const Value& start, const Value& end)
    {
        auto& wall = bind(variable, "Wall");
        wall->set("StartPoint", start, 0);
        wall->set("EndPoint", end, 0);
    }

    // The value of a constraint as a model writes it, after the calls of declared operators are
    // replaced.
    Value valueOf(const std::string& constraint)
    {
        CConstraint root;
        root.read(constraint);
        EXPECT_FALSE(rewriteCalls(root, m_declared, m_types).m_nodes.empty()) << constraint;
        root.fillConstraintsConstants({});
        return CConstraint::verify(root, m_bindings);
    }

    bool holds(const std::string& constraint) { return isTrue(valueOf(constraint)); }

    std::string m_text;
    std::string m_complaints;
    CConstraint::OperatorTable m_table;
    CConstraint::OperatorTable m_formerOperators;
    AgentOperators m_declared;
    std::map<std::string, std::string> m_types;
    CConstraint::Bindings m_bindings;
};

const std::vector<std::string>& things()
{
    static const std::vector<std::string> kThings{"Person", "Group", "Mobile"};
    return kThings;
}

} // namespace

TEST_F(Vocabulary, IsReadWithoutComplaint)
{
    EXPECT_EQ(m_complaints, "");
    std::size_t declarations = 0;
    std::istringstream lines(m_text);
    std::string line;
    while (std::getline(lines, line)) {
        declarations += line.rfind("operator ", 0) == 0 ? 1U : 0U;
    }
    EXPECT_GT(declarations, 0U);
    EXPECT_EQ(m_declared.size(), declarations);
}

TEST_F(Vocabulary, IsCopiedIntoTheBuild)
{
    EXPECT_EQ(textOf(CS_SHARE_FOLDER "/vocabulary.txt"), m_text);
}

TEST_F(Vocabulary, HasTheRelationsOfTime)
{
    bindEvent("a", span(3000, 6000));
    const std::map<std::string, Value> others{
        {"before", span(7000, 9000)},
        {"after", span(0, 1000)},
        {"meets", span(6500, 9000)},
        {"metBy", span(0, 2500)},
        {"overlaps", span(4000, 9000)},
        {"overlappedBy", span(0, 4000)},
        {"starts", span(3500, 9000)},
        {"startedBy", span(2500, 5000)},
        {"during", span(0, 9000)},
        {"contains", span(4000, 5000)},
        {"finishes", span(0, 6500)},
        {"finishedBy", span(4000, 5500)},
        {"equals", span(3500, 5500)}};
    for (const auto& [name, other] : others) {
        bindEvent("b", other);
        EXPECT_TRUE(holds("a " + name + " b")) << name;
        EXPECT_TRUE(holds(name + "(a, b)")) << name;
        bindEvent("b", span(4500, 4400));
        EXPECT_FALSE(holds("a " + name + " b")) << name;
    }
}

TEST_F(Vocabulary, RelationsOfTimeSayWhichEndsFirst)
{
    int seen = 0;
    for (const auto& declared : m_declared) {
        if (declared->parameters().size() != 2 || declared->parameters()[0].type != "Component") {
            continue;
        }
        ++seen;
        const CSOperatorInterfaceAbstract* loaded = findOperator(declared->m_name);
        ASSERT_NE(loaded, nullptr) << declared->m_name;
        EXPECT_TRUE(declared->m_isTemporal) << declared->m_name;
        EXPECT_EQ(declared->describe().m_endsFirst, loaded->describe().m_endsFirst)
            << declared->m_name;
    }
    EXPECT_EQ(seen, 14);
}

TEST_F(Vocabulary, MeasuresSubEvents)
{
    bindEvent("a", span(0, 2000));
    bindEvent("b", span(5000, 6000));
    EXPECT_TRUE(holds("duration(a) = 2"));
    EXPECT_TRUE(holds("gap(a, b) = 3"));
    EXPECT_FALSE(holds("gap(b, a) = 3"));
}

TEST_F(Vocabulary, KnowsInAndOutOfZones)
{
    bindZone("z", square());
    for (const std::string& thing : things()) {
        bindThing("p", thing, at(5, 5, 0));
        EXPECT_TRUE(holds("p inside z"));
        EXPECT_FALSE(holds("p outside z"));
        bindThing("p", thing, at(15, 5, 0));
        EXPECT_FALSE(holds("p inside z"));
        EXPECT_TRUE(holds("outside(p, z)"));
    }
}

TEST_F(Vocabulary, KnowsHowFarThingsAreApart)
{
    for (const std::string& thing : things()) {
        bindThing("p", thing, at(0, 0, 0));
        for (const char* const other : {"Person", "Group", "Mobile", "Equipment"}) {
            bindThing("q", other, at(2, 0, 0));
            EXPECT_TRUE(holds("p close q")) << other;
            bindThing("q", other, at(2.1, 0, 0));
            EXPECT_FALSE(holds("p close q")) << other;
            EXPECT_TRUE(holds("p near q")) << other;
            bindThing("q", other, at(5.1, 0, 0));
            EXPECT_FALSE(holds("near(p, q)")) << other;
            EXPECT_TRUE(holds("p far q")) << other;
            EXPECT_TRUE(holds("distance(p, q) = 5.1")) << other;
        }
        bindZone("z", square());
        bindThing("p", thing, at(12, 0, 0));
        EXPECT_TRUE(holds("p close z"));
        EXPECT_TRUE(holds("p near z"));
        EXPECT_TRUE(holds("distance(p, z) = 2"));
        bindThing("p", thing, at(16, 0, 0));
        EXPECT_TRUE(holds("p far z"));
    }
}

TEST_F(Vocabulary, KnowsMotion)
{
    for (const std::string& thing : things()) {
        bindThing("p", thing, walked({at(1, 0, 0), at(-1, 0, 0)}));
        EXPECT_TRUE(holds("speed(p) = 50"));
        EXPECT_TRUE(holds("heading(p) = 180"));
        bindWall("w", at(0, -1, 0), at(0, 1, 0));
        EXPECT_TRUE(holds("p crossed w"));
        EXPECT_TRUE(holds("p crossedLeft w"));
        EXPECT_FALSE(holds("crossedRight(p, w)"));
        bindZone("z", ring({{0, 1, 0}, {0, -1, 0}}));
        EXPECT_TRUE(holds("p crossed z"));
        EXPECT_FALSE(holds("p crossedLeft z"));
        EXPECT_TRUE(holds("p crossedRight z"));
    }
}

TEST_F(Vocabulary, LeavesCallsOnAttributesToTheOperators)
{
    bindThing("p", "Person", at(0, 0, 0));
    bindThing("q", "Person", at(30, 0, 0));
    CConstraint root;
    root.read("near(p->Position, q->Position, 40)");
    EXPECT_TRUE(rewriteCalls(root, m_declared, m_types).m_nodes.empty());
    root.fillConstraintsConstants({});
    EXPECT_TRUE(isTrue(CConstraint::verify(root, m_bindings)));
}

} // namespace scenariomatch
