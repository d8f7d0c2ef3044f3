#include "engine/PrimitivePlan.h"

#include "engine/CSEngine.h"
#include "engine/Truth.h"
#include "tests/engine/PlanMaterial.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>

namespace scenariomatch
{

namespace
{

using Lines = std::vector<std::string>;

bool areNumbers(const PlainOperator::Arguments& arguments)
{
    return arguments.size() == 2 && arguments[0].isNumber() && arguments[1].isNumber();
}

CSPlainValue distanceOf(const PlainOperator::Arguments& arguments)
{
    if (!arguments.at(0).isPoint() || !arguments.at(1).isPoint()) {
        return {};
    }
    const auto& a = arguments[0].m_point;
    const auto& b = arguments[1].m_point;
    return CSPlainValue::number(std::hypot(a.x - b.x, a.y - b.y));
}

// Models of persons, zones (which are constant) and cars, with operators of every meaning.
class PrimitivePlanTest : public ::testing::Test
{
protected:
    PrimitivePlanTest()
        : m_distance("distance", distanceOf)
        , m_less(
              "<",
              [](const auto& arguments) {
                  return CSPlainValue::boolean(
                      areNumbers(arguments) && arguments[0].m_number < arguments[1].m_number, 0.75);
              })
        , m_near(
              "near",
              [](const auto& arguments) {
                  const CSPlainValue distance = distanceOf(arguments);
                  return CSPlainValue::boolean(
                      distance.isNumber() && distance.m_number <= arguments.at(2).m_number, 0.5);
              })
        , m_both(
              "&&",
              [](const auto& arguments) {
                  return CSPlainValue::boolean(arguments[0].m_truth && arguments[1].m_truth);
              })
        , m_sure(
              "sure",
              [](const auto& arguments) {
                  return CSPlainValue::boolean(arguments[0].isNumber(), 0.875);
              })
        , m_impure("impure", [](const auto&) { return CSPlainValue::boolean(true); })
    {
        m_distance.m_description.m_meaning = CSOperatorMeaning::Distance;
        m_less.m_description.m_meaning = CSOperatorMeaning::AtMost;
        m_near.m_description.m_meaning = CSOperatorMeaning::Nearness;
        m_both.m_description.m_meaning = CSOperatorMeaning::Conjunction;
        m_impure.m_description.m_pure = false;
        CSAgent::m_constantObjects = {{"Zone", true}, {"Person", false}, {"Car", false}};
    }

    void TearDown() override { CSAgent::m_constantObjects.clear(); }

    // Makes the plans ready as a whole; those that have the same work share it.
    void prepare(const std::vector<std::shared_ptr<CSScenario>>& models, bool isPlain = false)
    {
        m_plans.clear();
        m_context = std::make_unique<PlanContext>();
        for (const auto& model : models) {
            m_plans.push_back(std::make_unique<PrimitivePlan>(model, *m_context, isPlain));
        }
        std::map<std::string, PrimitivePlan*> finders;
        for (const auto& plan : m_plans) {
            const auto [finder, isNew] = finders.try_emplace(plan->work(), plan.get());
            if (isNew || plan->work().empty()) {
                plan->countShared();
            } else {
                plan->follow(*finder->second);
                ++m_followers;
            }
        }
        for (const auto& plan : m_plans) {
            plan->prepareTests();
        }
    }

    void begin()
    {
        m_context->view.begin(m_scene.m_agents, CSTimeStamp(1, 0.0, 0.0), m_types);
        m_context->shared.beginFrame();
    }

    // What the plan visits: agents by variable, then the confidences.
    static Lines visited(PrimitivePlan& plan, std::uint64_t& candidates)
    {
        Lines lines;
        candidates = plan.enumerate([&] {
            std::ostringstream line;
            for (std::size_t slot = 0; slot < plan.variables().size(); ++slot) {
                line << plan.variables()[slot] << '=' << plan.agent(slot)->m_ID << ' ';
            }
            for (std::size_t i = 0; i < plan.tested(); ++i) {
                line << plan.confidence(i) << ' ';
            }
            lines.push_back(line.str());
        });
        return lines;
    }

    Lines visited(std::size_t plan)
    {
        std::uint64_t candidates = 0;
        return visited(*m_plans[plan], candidates);
    }

    // The agents of the types that variables name, type by type, in the plain order.
    std::vector<std::shared_ptr<CSAgent>> present(const std::string& type) const
    {
        std::vector<std::shared_ptr<CSAgent>> agents;
        for (const auto& [id, agent] : m_scene.m_agents) {
            if (agent->m_type == type && (agent->m_constant || agent->m_frameID == 1)) {
                agents.push_back(agent);
            }
        }
        return agents;
    }

    // The same by permutation lists and evaluation with value objects, without a plan.
    Lines expected(const CSScenario& model, std::size_t tested, std::uint64_t& candidates) const;
    // The line of a candidate; empty where one of the first constraints does not hold.
    static std::string
    lineOf(const CSScenario& model, std::size_t tested, const CConstraint::Bindings& bindings);

    void expectSameAsPlain(const std::vector<std::shared_ptr<CSScenario>>& models)
    {
        for (std::size_t i = 0; i < models.size(); ++i) {
            std::uint64_t candidates = 0;
            std::uint64_t expectedCandidates = 0;
            const Lines lines = visited(*m_plans[i], candidates);
            const Lines plain = expected(*models[i], m_plans[i]->tested(), expectedCandidates);
            ASSERT_EQ(lines, plain) << printed(i);
            ASSERT_EQ(candidates, expectedCandidates) << printed(i);
            m_visits += lines.size();
            m_candidates += candidates;
        }
    }

    std::string printed(std::size_t plan) const
    {
        std::ostringstream text;
        m_plans[plan]->print(text);
        return text.str();
    }

    Constraint distanceBelow(const std::string& a, const std::string& b, double reach)
    {
        return call(
            m_less, call(m_distance, attributeOf(a, "P"), attributeOf(b, "P")), number(reach));
    }

    CSAgent& addPerson(double x, double n = 0.0)
    {
        return filled(m_scene.add("Person", 1), x, 0.0, n);
    }

    CSAgent& addZone(double x) { return filled(m_scene.addConstant("Zone"), x, 0.0, 0.0); }

    static CSAgent& filled(CSAgent& agent, double x, double y, double n)
    {
        agent.set("P", std::make_shared<CS2DDPoint>(x, y), 1);
        agent.set("N", std::make_shared<CSDouble>(n), 1);
        return agent;
    }

    std::shared_ptr<CSScenario> randomModel(std::mt19937& random);
    Constraint randomConstraint(std::mt19937& random, const Lines& variables);
    void randomScene(std::mt19937& random);

    PlainOperator m_distance;
    PlainOperator m_less;
    PlainOperator m_near;
    PlainOperator m_both;
    PlainOperator m_sure;
    PlainOperator m_impure;
    Scene m_scene;
    FrameView::TypeTable m_types{{"Person", {"Person"}}, {"Zone", {"Zone"}}, {"Car", {"Car"}}};
    std::unique_ptr<PlanContext> m_context;
    std::vector<std::unique_ptr<PrimitivePlan>> m_plans;
    int m_followers = 0;
    std::size_t m_visits = 0;
    std::size_t m_candidates = 0;
};

std::string PrimitivePlanTest::lineOf(
    const CSScenario& model, std::size_t tested, const CConstraint::Bindings& bindings)
{
    std::ostringstream line;
    for (const auto& [variable, agent] : bindings) {
        line << variable << '=' << agent->m_ID << ' ';
    }
    for (std::size_t i = 0; i < tested; ++i) {
        const auto value = CConstraint::verify(*model.m_constraints[i], bindings);
        const Truth truth(value.get());
        if (!truth.holds) {
            return "";
        }
        line << truth.confidence << ' ';
    }
    return line.str();
}

Lines PrimitivePlanTest::expected(
    const CSScenario& model, std::size_t tested, std::uint64_t& candidates) const
{
    std::vector<std::vector<std::vector<int>>> selections;
    std::vector<int> sizes;
    for (const auto& [type, variables] : model.m_variablesByType) {
        std::vector<int> numbers(present(type).size());
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            numbers[i] = static_cast<int>(i);
        }
        selections.push_back(createPermutationList(numbers, static_cast<int>(variables.size())));
        sizes.push_back(static_cast<int>(selections.back().size()));
    }
    Lines lines;
    const auto tuples = createPermutationList(sizes);
    candidates = tuples.size();
    for (const auto& tuple : tuples) {
        CConstraint::Bindings bindings;
        std::size_t group = 0;
        for (const auto& [type, variables] : model.m_variablesByType) {
            const auto agents = present(type);
            const auto& chosen = selections[group][static_cast<std::size_t>(tuple[group])];
            for (std::size_t i = 0; i < variables.size(); ++i) {
                bindings[variables[i]] = agents[static_cast<std::size_t>(chosen[i])];
            }
            ++group;
        }
        const std::string line = lineOf(model, tested, bindings);
        if (!line.empty()) {
            lines.push_back(line);
        }
    }
    return lines;
}

Constraint PrimitivePlanTest::randomConstraint(std::mt19937& random, const Lines& variables)
{
    const auto variable = [&] { return variables[random() % variables.size()]; };
    const double reach = 0.5 * static_cast<double>(random() % 8) - 0.5;
    switch (random() % 8) {
    case 0:
        return distanceBelow(variable(), variable(), reach);
    case 1:
        return call(
            m_near, attributeOf(variable(), "P"), attributeOf(variable(), "P"), number(reach));
    case 2:
        return call(
            m_both,
            distanceBelow(variable(), variable(), reach),
            call(m_sure, attributeOf(variable(), "N")));
    case 3:
        return call(m_less, attributeOf(variable(), "N"), number(2.0));
    case 4:
        return call(m_less, attributeOf(variable(), "N"), attributeOf(variable(), "N"));
    case 5:
        return call(m_less, number(random() % 6 == 0 ? 3.0 : 1.0), number(2.0));
    case 6:
        return random() % 3 == 0 ? call(m_impure, attributeOf(variable(), "N"))
                                 : call(m_sure, attributeOf("nobody" + variable(), "N"));
    default:
        return call(
            m_both,
            call(m_sure, attributeOf(variable(), "N")),
            call(m_less, attributeOf(variable(), "N"), attributeOf(variable(), "N")));
    }
}

std::shared_ptr<CSScenario> PrimitivePlanTest::randomModel(std::mt19937& random)
{
    const Lines names{"p", "q", "z", "a"};
    const Lines types{"Person", "Person", "Zone", "Car"};
    std::vector<std::pair<std::string, std::string>> declared;
    Lines variables;
    const std::size_t count = 1 + random() % 3;
    for (std::size_t i = 0; i < count; ++i) {
        const bool isTwice = i > 0 && random() % 20 == 0;
        variables.push_back(isTwice ? variables[0] : names[(random() % 2 + i) % names.size()]);
        if (!isTwice && std::count(variables.begin(), variables.end(), variables.back()) > 1) {
            variables.back() += std::to_string(i);
        }
        declared.emplace_back(variables.back(), types[random() % types.size()]);
    }
    auto model = modelWith("M", declared);
    const std::size_t constraints = random() % 5;
    for (std::size_t i = 0; i < constraints; ++i) {
        model->m_constraints.push_back(randomConstraint(random, variables));
    }
    return model;
}

void PrimitivePlanTest::randomScene(std::mt19937& random)
{
    m_scene = {};
    const Lines types{"Person", "Person", "Car"};
    const std::size_t agents = random() % 9;
    for (std::size_t i = 0; i < agents; ++i) {
        const bool isZone = random() % 4 == 0;
        CSAgent& agent =
            isZone ? m_scene.addConstant("Zone")
                   : m_scene.add(types[random() % types.size()], random() % 6 == 0 ? 0 : 1);
        filled(
            agent,
            0.5 * static_cast<double>(random() % 6),
            0.5 * static_cast<double>(random() % 3),
            static_cast<double>(random() % 4));
        if (random() % 10 == 0) {
            agent.m_attributes.erase(random() % 2 == 0 ? "P" : "N");
        }
    }
}

} // namespace

TEST_F(PrimitivePlanTest, VisitsTypeByTypeThenVariableByVariable)
{
    addPerson(0.0);
    addZone(0.0);
    addPerson(0.0);
    addZone(0.0);
    // Persons come before zones: by type, not by declaration; q was declared before p.
    prepare({modelWith("M", {{"z", "Zone"}, {"q", "Person"}, {"p", "Person"}})});
    begin();
    EXPECT_EQ(
        visited(0),
        (Lines{
            "p=102 q=100 z=101 ",
            "p=102 q=100 z=103 ",
            "p=100 q=102 z=101 ",
            "p=100 q=102 z=103 "}));
}

TEST_F(PrimitivePlanTest, KeepsTheOrderHoweverVariablesAreBound)
{
    for (int i = 0; i < 6; ++i) {
        addPerson(i % 3);
        addZone(i % 3);
    }
    const auto model = modelWith("M", {{"p", "Person"}, {"q", "Person"}, {"z", "Zone"}});
    model->m_constraints.push_back(distanceBelow("p", "q", 1.5));
    model->m_constraints.push_back(distanceBelow("z", "q", 0.5));
    model->m_constraints.push_back(call(m_less, attributeOf("z", "N"), number(1.0)));
    prepare({model});
    begin();
    expectSameAsPlain({model});
    EXPECT_GT(m_visits, 10U);
    // It is the zone that is bound first.
    EXPECT_EQ(printed(0).find("    bind z to each Zone"), printed(0).find("    bind"));
}

TEST_F(PrimitivePlanTest, CountsCandidatesThatItNeverVisits)
{
    for (int i = 0; i < 5; ++i) {
        addPerson(10.0 * i);
    }
    const auto model = modelWith("M", {{"p", "Person"}, {"q", "Person"}});
    model->m_constraints.push_back(distanceBelow("p", "q", 1.0));
    prepare({model});
    begin();
    std::uint64_t candidates = 0;
    EXPECT_EQ(visited(*m_plans[0], candidates), Lines());
    EXPECT_EQ(candidates, 20U);
}

TEST_F(PrimitivePlanTest, HasNoCandidatesWhereAgentsOrVariablesAreMissing)
{
    addPerson(0.0);
    prepare({modelWith("None", {}), modelWith("Two", {{"p", "Person"}, {"q", "Person"}})});
    begin();
    for (const auto& plan : m_plans) {
        std::uint64_t candidates = 99;
        EXPECT_EQ(visited(*plan, candidates), Lines());
        EXPECT_EQ(candidates, 0U);
    }
}

TEST_F(PrimitivePlanTest, NeverTestsAnImpureConstraintNorWhatFollows)
{
    addPerson(0.0, 1.0);
    addPerson(0.0, 5.0);
    const auto model = modelWith("M", {{"p", "Person"}});
    model->m_constraints.push_back(call(m_sure, attributeOf("p", "N")));
    model->m_constraints.push_back(call(m_impure, attributeOf("p", "N")));
    model->m_constraints.push_back(call(m_less, attributeOf("p", "N"), number(2.0)));
    prepare({model});
    begin();
    EXPECT_EQ(m_plans[0]->tested(), 1U);
    EXPECT_EQ(visited(0), (Lines{"p=100 0.875 ", "p=101 0.875 "}));
    EXPECT_EQ(m_impure.calls(), 0);
    EXPECT_EQ(m_less.calls(), 0);
    EXPECT_EQ(m_sure.calls(), 2);
}

TEST_F(PrimitivePlanTest, TestsNothingOfAPlainPlan)
{
    addPerson(0.0, 5.0);
    const auto model = modelWith("M", {{"p", "Person"}});
    model->m_constraints.push_back(call(m_less, attributeOf("p", "N"), number(2.0)));
    prepare({model}, true);
    begin();
    EXPECT_EQ(m_plans[0]->tested(), 0U);
    EXPECT_EQ(visited(0), Lines{"p=100 "});
    EXPECT_EQ(m_less.calls(), 0);
    EXPECT_EQ(m_plans[0]->work(), "");
}

TEST_F(PrimitivePlanTest, BindsAVariableThatIsDeclaredTwiceToTheLast)
{
    addPerson(0.0, 5.0);
    addPerson(0.0, 1.0);
    const auto model = modelWith("M", {{"p", "Person"}, {"p", "Person"}});
    model->m_constraints.push_back(call(m_less, attributeOf("p", "N"), number(2.0)));
    prepare({model});
    begin();
    EXPECT_EQ(m_plans[0]->tested(), 0U);
    EXPECT_EQ(visited(0), (Lines{"p=101 ", "p=100 "}));
}

TEST_F(PrimitivePlanTest, TestsAConstraintWithoutVariablesOnce)
{
    for (int i = 0; i < 10; ++i) {
        addPerson(0.0);
    }
    const auto never = modelWith("Never", {{"p", "Person"}});
    never->m_constraints.push_back(call(m_less, number(3.0), number(2.0)));
    prepare({never});
    begin();
    std::uint64_t candidates = 0;
    EXPECT_EQ(visited(*m_plans[0], candidates), Lines());
    EXPECT_EQ(candidates, 10U);
    EXPECT_EQ(m_less.calls(), 1);
}

TEST_F(PrimitivePlanTest, ComputesOnceWhatModelsShare)
{
    for (int i = 0; i < 4; ++i) {
        addPerson(0.0, i);
    }
    const auto one = modelWith("One", {{"p", "Person"}});
    one->m_constraints.push_back(call(m_sure, attributeOf("p", "N")));
    one->m_constraints.push_back(call(m_less, attributeOf("p", "N"), number(2.0)));
    const auto two = modelWith("Two", {{"q", "Person"}});
    two->m_constraints.push_back(call(m_sure, attributeOf("q", "N")));
    two->m_constraints.push_back(call(m_less, attributeOf("q", "N"), number(3.0)));
    prepare({one, two});
    begin();
    EXPECT_EQ(visited(0).size(), 2U);
    EXPECT_EQ(visited(1).size(), 3U);
    EXPECT_EQ(m_sure.calls(), 4);
    EXPECT_EQ(m_followers, 0);
}

TEST_F(PrimitivePlanTest, FindsTheCandidatesOfEqualModelsOnce)
{
    for (int i = 0; i < 4; ++i) {
        addPerson(i, i);
    }
    std::vector<std::shared_ptr<CSScenario>> models;
    for (const auto& [p, q] : {std::pair("p", "q"), std::pair("a", "b")}) {
        const auto model = modelWith("M", {{p, "Person"}, {q, "Person"}});
        model->m_constraints.push_back(distanceBelow(p, q, 1.5));
        models.push_back(model);
    }
    models[1]->m_constraints.push_back(call(m_impure, attributeOf("a", "N")));
    prepare(models);
    EXPECT_EQ(m_followers, 1);
    begin();
    const Lines first = visited(0);
    const int calls = m_less.calls();
    EXPECT_EQ(first.front(), "p=100 q=101 0.75 ");
    EXPECT_EQ(visited(1).front(), "a=100 b=101 0.75 ");
    EXPECT_EQ(visited(1).size(), first.size());
    EXPECT_EQ(m_less.calls(), calls);
    // Anew in the next frame, asked in the other order.
    m_scene.m_agents.erase(0);
    begin();
    EXPECT_EQ(visited(1).front(), "a=101 b=102 0.75 ");
    EXPECT_EQ(visited(0).front(), "p=101 q=102 0.75 ");
}

TEST_F(PrimitivePlanTest, DoesNotFollowWhereVariablesAreExchanged)
{
    const auto one = modelWith("One", {{"p", "Person"}, {"q", "Person"}});
    one->m_constraints.push_back(call(m_less, attributeOf("p", "N"), attributeOf("q", "N")));
    const auto two = modelWith("Two", {{"p", "Person"}, {"q", "Person"}});
    two->m_constraints.push_back(call(m_less, attributeOf("q", "N"), attributeOf("p", "N")));
    const auto car = modelWith("Car", {{"p", "Person"}, {"q", "Car"}});
    car->m_constraints.push_back(call(m_less, attributeOf("p", "N"), attributeOf("q", "N")));
    prepare({one, two, car});
    EXPECT_EQ(m_followers, 0);
}

TEST_F(PrimitivePlanTest, PrintsOrderOfBindingTestsAndWhatIsShared)
{
    const auto one = modelWith("One", {{"p", "Person"}, {"q", "Person"}, {"z", "Zone"}});
    one->m_kind = "PrimitiveState";
    one->m_constraints.push_back(call(m_less, attributeOf("z", "N"), number(1.0)));
    one->m_constraints.push_back(distanceBelow("p", "q", 1.5));
    one->m_constraints.push_back(
        call(m_both, call(m_sure, attributeOf("p", "N")), call(m_sure, attributeOf("q", "N"))));
    one->m_constraints.push_back(call(m_impure, attributeOf("p", "N")));
    const auto two = modelWith("Two", {{"y", "Zone"}});
    two->m_kind = "PrimitiveState";
    two->m_constraints.push_back(call(
        m_both,
        call(m_less, attributeOf("y", "N"), number(1.0)),
        call(m_sure, attributeOf("y", "N"))));
    const auto same = modelWith("Same", {{"x", "Zone"}});
    same->m_kind = "PrimitiveState";
    same->m_constraints.push_back(call(
        m_both,
        call(m_less, attributeOf("x", "N"), number(1.0)),
        call(m_sure, attributeOf("x", "N"))));
    prepare({one, two, same});
    EXPECT_EQ(
        printed(0),
        "PrimitiveState One\n"
        "    bind z to each Zone\n"
        "        test z->N < 1, once for all\n"
        "    bind p to each Person\n"
        "    bind q to each Person within 1.5 of p\n"
        "        test distance(p->P, q->P) < 1.5\n"
        "        test sure(p->N) && sure(q->N)\n"
        "            once for all: sure(p->N)\n"
        "            once for all: sure(q->N)\n"
        "    then test impure(p->N)\n");
    EXPECT_EQ(
        printed(1),
        "PrimitiveState Two\n"
        "    bind y to each Zone\n"
        "        test (y->N < 1) && sure(y->N), once for all\n");
    EXPECT_EQ(printed(2), "PrimitiveState Same\n    the candidates of Two\n");
}

// Random models on random scenes, several at a time and some of them twice: all plans visit what
// the permutation lists give, in their order.
TEST_F(PrimitivePlanTest, VisitsWhatPermutationListsGive)
{
    for (unsigned seed = 0; seed < 1500; ++seed) {
        SCOPED_TRACE(seed);
        std::vector<std::shared_ptr<CSScenario>> models;
        models.reserve(4);
        std::mt19937 random(seed);
        for (int i = 0; i < 3; ++i) {
            models.push_back(randomModel(random));
        }
        std::mt19937 again(seed);
        models.push_back(randomModel(again));
        prepare(models);
        for (int frame = 0; frame < 3; ++frame) {
            randomScene(random);
            begin();
            expectSameAsPlain(models);
            if (HasFatalFailure()) {
                return;
            }
        }
    }
    EXPECT_GT(m_followers, 500);
    EXPECT_GT(m_visits, 10000U);
    EXPECT_GT(m_candidates, 2 * m_visits);
}

} // namespace scenariomatch
