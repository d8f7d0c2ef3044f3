#include "engine/CSEngine.h"
#include "LoadedOperators.h"
#include "Walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

// Values on which the operator has an answer: a true relation or a value. New ones at each call.
struct Example
{
    std::string name;
    Values arguments;
};

Value walking()
{
    return walked({at(1, 0, 0), at(-1, 0, 0)});
}

std::vector<Example> comparisonsAndLogic()
{
    return {
        {"=", {whole(1), decimal(1)}},
        {"=", {word("Desk"), word("Desk")}},
        {"=", {fact(true), fact(true)}},
        {"=", {at(1, 2), at(1, 2)}},
        {"=", {at(1, 2, 3), at(1, 2, 3)}},
        {"=", {square(), square()}},
        {"=", {span(0, 1), span(0, 1)}},
        {"=", {stamp(1), stamp(1)}},
        {"!=", {whole(1), decimal(2)}},
        {"!=", {at(1, 2), at(1, 3)}},
        {"!=", {span(0, 1), span(0, 2)}},
        {"<", {whole(1), decimal(2)}},
        {"<", {stamp(1), stamp(2)}},
        {"<=", {whole(2), decimal(2)}},
        {">", {word("b"), word("a")}},
        {">=", {decimal(2), decimal(2)}},
        {"and", {fact(true), fact(true)}},
        {"or", {fact(true), fact(false)}},
        {"!", {fact(false)}}};
}

std::vector<Example> arithmetic()
{
    const Values eight(8, whole(1));
    return {
        {"+", {whole(1), decimal(2)}},
        {"-", {whole(1), decimal(2)}},
        {"*", {whole(1), decimal(2)}},
        {"/", {whole(1), decimal(2)}},
        {"abs", {decimal(-1)}},
        {"min", {decimal(1), whole(2)}},
        {"min", eight},
        {"max", {decimal(1), whole(2)}},
        {"max", eight},
        {"value", {word("Desk")}}};
}

std::vector<Example> spaceAndMotion()
{
    return {
        {"distance", {at(0, 0), at(1, 1, 1)}},
        {"distance", {at(0, 0), square()}},
        {"in", {at(5, 5), square()}},
        {"out", {wholeAt(15, 5), square()}},
        {"near", {at(0, 0), square(), whole(1)}},
        {"speed", {walking()}},
        {"speed", {walking(), whole(1)}},
        {"displacement", {walking(), whole(1)}},
        {"heading", {walking()}},
        {"heading", {walking(), whole(1)}},
        {"crossed", {walking(), at(0, -1), at(0, 1)}},
        {"crossed", {walking(), ring({{0, -1, 0}, {0, 1, 0}})}},
        {"crossedLeft", {walking(), at(0, -1), at(0, 1)}},
        {"crossedLeft", {walking(), ring({{0, -1, 0}, {0, 1, 0}})}},
        {"crossedRight", {walking(), at(0, 1), at(0, -1)}},
        {"crossedRight", {walking(), ring({{0, 1, 0}, {0, -1, 0}})}},
        {"stationary", {walking(), decimal(0.04), whole(2)}}};
}

std::vector<Example> intervals()
{
    const Value frame = decimal(0.04);
    return {
        {"before", {span(0, 1), span(2, 3)}},
        {"after", {span(2, 3), span(0, 1)}},
        {"meets", {span(0, 1), span(1, 2)}},
        {"meets", {span(0, 1), span(3, 4), frame}},
        {"metBy", {span(1, 2), span(0, 1)}},
        {"metBy", {span(3, 4), span(0, 1), frame}},
        {"overlaps", {span(0, 2), span(1, 3)}},
        {"overlappedBy", {span(1, 3), span(0, 2)}},
        {"starts", {span(0, 1), span(0, 2)}},
        {"starts", {span(0, 1), span(0, 2), frame}},
        {"startedBy", {span(0, 2), span(0, 1)}},
        {"startedBy", {span(0, 2), span(0, 1), frame}},
        {"during", {span(1, 2), span(0, 3)}},
        {"contains", {span(0, 3), span(1, 2)}},
        {"finishes", {span(1, 2), span(0, 2)}},
        {"finishes", {span(1, 2), span(0, 2), frame}},
        {"finishedBy", {span(0, 2), span(1, 2)}},
        {"finishedBy", {span(0, 2), span(1, 2), frame}},
        {"equals", {span(0, 2), span(0, 2)}},
        {"equals", {span(0, 2), span(0, 2), frame}},
        {"duration", {span(0, 2)}},
        {"gap", {span(0, 2), span(3, 4)}}};
}

std::vector<Example> examples()
{
    std::vector<Example> all = comparisonsAndLogic();
    for (auto* const more : {arithmetic, spaceAndMotion, intervals}) {
        const std::vector<Example> part = more();
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

// One value of every type, none of which is the answer to anything in the examples.
Value anyOf(const std::string& tag)
{
    const std::map<std::string, Value> values{
        {"BOOL", fact(true)},
        {"STRING", word("else")},
        {"INT", whole(77)},
        {"DOUBLE", decimal(77.5)},
        {"3DDPOINT", at(77, 77, 77)},
        {"3DIPOINT", wholeAt(77, 77, 77)},
        {"2DDPOINT", at(77, 77)},
        {"2DIPOINT", wholeAt(77, 77)},
        {"TIMESTAMP", stamp(77)},
        {"INTERVAL", span(77, 78)},
        {"3DDPOINTS", square()},
        {"ACCESSORAGENT", std::make_shared<CSAccessorAgent>("p", "Position")}};
    return values.at(tag);
}

// The value with NaN for a number in it; empty for a type that has none.
Value withNaN(const Value& value)
{
    const auto noTime = std::make_shared<CSTimeStamp>(0, kNaN, 0.0);
    const std::map<std::string, Value> values{
        {"BOOL", fact(true, kNaN)},
        {"INT", decimal(kNaN)},
        {"DOUBLE", decimal(kNaN)},
        {"3DDPOINT", at(kNaN, 0, 0)},
        {"2DDPOINT", at(0, kNaN)},
        {"TIMESTAMP", noTime},
        {"INTERVAL", std::make_shared<CSInterval>(noTime, stamp(1))},
        {"3DDPOINTS", ring({{0, 0, 0}, {0, kNaN, 0}, {1, 1, 1}})}};
    const auto found = values.find(value->m_type);
    return found != values.end() ? found->second : nullptr;
}

bool isAnswer(const CSOperatorInterfaceAbstract& op, const Value& result)
{
    return op.describe().m_result == "BOOL" ? isTrue(result) : result != nullptr;
}

// A false relation, an empty measure.
bool isNoAnswer(const CSOperatorInterfaceAbstract& op, const Value& result)
{
    return op.describe().m_result == "BOOL" ? isFalse(result) : result == nullptr;
}

Values replaced(Values arguments, std::size_t position, const Value& value)
{
    arguments[position] = value;
    return arguments;
}

bool accepts(const CSOperatorDescription& description, std::size_t position, const std::string& tag)
{
    const auto& types = description.m_arguments.at(position);
    return std::find(types.begin(), types.end(), tag) != types.end();
}

void expectNoAnswerForTypesNotNamed(const Example& example, std::size_t position)
{
    CSOperatorInterfaceAbstract& op = *findOperator(example.name);
    for (const std::string& tag : anyTypes()) {
        const Values arguments = replaced(example.arguments, position, anyOf(tag));
        if (!accepts(op.describe(), position, tag)) {
            EXPECT_TRUE(isNoAnswer(op, evaluate(op, arguments)))
                << example.name << " " << position << " " << tag;
        }
    }
}

class OperatorPlugins : public testing::Test
{
protected:
    void SetUp() override { CSEngine::h_currentTime = framesUpTo(10); }

    void TearDown() override { CSEngine::h_currentTime.clear(); }
};

} // namespace

TEST_F(OperatorPlugins, AllLoad)
{
    EXPECT_EQ(loadedOperators().size(), 43U);
    for (const LoadedOperator& loaded : loadedOperators()) {
        EXPECT_NE(loaded.object, nullptr) << loaded.family << "/" << loaded.file;
    }
}

TEST_F(OperatorPlugins, HaveTheNamesOfTheExamples)
{
    std::set<std::string> expected;
    for (const Example& example : examples()) {
        expected.insert(example.name);
    }
    std::set<std::string> found;
    for (const LoadedOperator& loaded : loadedOperators()) {
        EXPECT_TRUE(found.insert(loaded.object->m_name).second) << loaded.object->m_name;
    }
    EXPECT_EQ(found, expected);
}

TEST_F(OperatorPlugins, DescribeThemselvesFully)
{
    const std::vector<std::string> tags = anyTypes();
    for (const LoadedOperator& loaded : loadedOperators()) {
        SCOPED_TRACE(loaded.file);
        const CSOperatorDescription description = loaded.object->describe();
        EXPECT_THAT(description.m_summary, testing::EndsWith("."));
        EXPECT_TRUE(description.m_pure);
        EXPECT_TRUE(description.m_plain);
        EXPECT_GE(description.m_requiredArguments, 1U);
        EXPECT_LE(description.m_requiredArguments, description.m_arguments.size());
        for (const auto& types : description.m_arguments) {
            EXPECT_FALSE(types.empty());
            EXPECT_THAT(tags, testing::IsSupersetOf(types));
            EXPECT_EQ(std::set<std::string>(types.begin(), types.end()).size(), types.size());
        }
        // The result of value is whatever its argument is.
        if (loaded.object->m_name == "value") {
            EXPECT_EQ(description.m_result, "");
        } else {
            EXPECT_THAT(tags, testing::Contains(description.m_result));
        }
    }
}

TEST_F(OperatorPlugins, AreTemporalWhenTheyRelateTwoIntervals)
{
    for (const LoadedOperator& loaded : loadedOperators()) {
        const bool isGap = loaded.object->m_name == "gap";
        EXPECT_EQ(loaded.object->m_isTemporal, loaded.family == "interval" || isGap) << loaded.file;
    }
}

TEST_F(OperatorPlugins, SayWhichIntervalEndsFirst)
{
    const std::map<std::string, std::size_t> expected{
        {"before", 0},
        {"after", 1},
        {"meets", 0},
        {"metBy", 1},
        {"overlaps", 0},
        {"overlappedBy", 1},
        {"starts", 0},
        {"startedBy", 1},
        {"during", 0},
        {"contains", 1},
        {"gap", 0}};
    std::map<std::string, std::size_t> found;
    for (const LoadedOperator& loaded : loadedOperators()) {
        if (const auto endsFirst = loaded.object->describe().m_endsFirst) {
            found[loaded.object->m_name] = *endsFirst;
        }
    }
    EXPECT_EQ(found, expected);
}

TEST_F(OperatorPlugins, SayWhatTheyMean)
{
    const std::map<std::string, CSOperatorMeaning> expected{
        {"and", CSOperatorMeaning::Conjunction},
        {"<", CSOperatorMeaning::AtMost},
        {"<=", CSOperatorMeaning::AtMost},
        {">", CSOperatorMeaning::AtLeast},
        {">=", CSOperatorMeaning::AtLeast},
        {"distance", CSOperatorMeaning::Distance},
        {"near", CSOperatorMeaning::Nearness}};
    std::map<std::string, CSOperatorMeaning> found;
    for (const LoadedOperator& loaded : loadedOperators()) {
        const CSOperatorMeaning meaning = loaded.object->describe().m_meaning;
        if (meaning != CSOperatorMeaning::Any) {
            found[loaded.object->m_name] = meaning;
        }
    }
    EXPECT_EQ(found, expected);
}

TEST_F(OperatorPlugins, AnswerTheirExamples)
{
    for (const Example& example : examples()) {
        CSOperatorInterfaceAbstract* op = findOperator(example.name);
        ASSERT_NE(op, nullptr) << example.name;
        EXPECT_TRUE(isAnswer(*op, evaluate(*op, example.arguments))) << example.name;
    }
}

TEST_F(OperatorPlugins, ResultsAreOfTheTypePromised)
{
    for (const Example& example : examples()) {
        CSOperatorInterfaceAbstract* op = findOperator(example.name);
        if (example.name != "value") {
            EXPECT_EQ(evaluate(*op, example.arguments)->m_type, op->describe().m_result)
                << example.name;
        }
    }
}

TEST_F(OperatorPlugins, TakeAsManyArgumentsAsTheySay)
{
    std::map<std::string, std::set<std::size_t>> counts;
    for (const Example& example : examples()) {
        const CSOperatorDescription description = findOperator(example.name)->describe();
        counts[example.name].insert(example.arguments.size());
        for (std::size_t i = 0; i < example.arguments.size(); ++i) {
            EXPECT_TRUE(accepts(description, i, example.arguments[i]->m_type)) << example.name;
        }
    }
    for (const auto& [name, found] : counts) {
        const CSOperatorDescription description = findOperator(name)->describe();
        EXPECT_EQ(*found.begin(), description.m_requiredArguments) << name;
        EXPECT_EQ(*found.rbegin(), description.m_arguments.size()) << name;
    }
}

TEST_F(OperatorPlugins, GiveNoAnswerForWrongCounts)
{
    for (const Example& example : examples()) {
        CSOperatorInterfaceAbstract* op = findOperator(example.name);
        const CSOperatorDescription description = op->describe();
        Values fewer = example.arguments;
        fewer.resize(description.m_requiredArguments - 1);
        EXPECT_TRUE(isNoAnswer(*op, evaluate(*op, fewer))) << example.name;
        Values more = example.arguments;
        more.resize(description.m_arguments.size() + 1, example.arguments.back());
        EXPECT_TRUE(isNoAnswer(*op, evaluate(*op, more))) << example.name;
    }
}

TEST_F(OperatorPlugins, GiveNoAnswerForMissingArguments)
{
    for (const LoadedOperator& loaded : loadedOperators()) {
        for (std::size_t count = 0; count <= 10; ++count) {
            const Values missing(count);
            EXPECT_TRUE(isNoAnswer(*loaded.object, evaluate(*loaded.object, missing)))
                << loaded.file << " of " << count;
        }
    }
    for (const Example& example : examples()) {
        CSOperatorInterfaceAbstract* op = findOperator(example.name);
        for (std::size_t i = 0; i < example.arguments.size(); ++i) {
            EXPECT_TRUE(isNoAnswer(*op, evaluate(*op, replaced(example.arguments, i, nullptr))))
                << example.name << " " << i;
        }
    }
}

TEST_F(OperatorPlugins, GiveNoAnswerForTypesTheyDoNotName)
{
    for (const Example& example : examples()) {
        for (std::size_t i = 0; i < example.arguments.size(); ++i) {
            expectNoAnswerForTypesNotNamed(example, i);
        }
    }
}

TEST_F(OperatorPlugins, GiveNoAnswerForATagThatIsNotTheClass)
{
    for (const Example& example : examples()) {
        CSOperatorInterfaceAbstract* op = findOperator(example.name);
        for (std::size_t i = 0; i < example.arguments.size() && example.name != "value"; ++i) {
            for (const std::string& tag : anyTypes()) {
                const Values arguments = replaced(example.arguments, i, disguised(tag));
                EXPECT_TRUE(isNoAnswer(*op, evaluate(*op, arguments)))
                    << example.name << " " << i << " " << tag;
            }
        }
    }
}

TEST_F(OperatorPlugins, GiveNoAnswerForNaN)
{
    for (const Example& example : examples()) {
        CSOperatorInterfaceAbstract* op = findOperator(example.name);
        for (std::size_t i = 0; i < example.arguments.size(); ++i) {
            const Value broken = withNaN(example.arguments[i]);
            if (broken && example.name != "value") {
                EXPECT_TRUE(isNoAnswer(*op, evaluate(*op, replaced(example.arguments, i, broken))))
                    << example.name << " " << i;
            }
        }
    }
}

TEST_F(OperatorPlugins, MotionReadsTheEnginesTimesAndAddsNone)
{
    const auto known = CSEngine::h_currentTime;
    CSOperatorInterfaceAbstract* speed = findOperator("speed");
    const Value late = walked({{100, at(0, 0)}, {101, at(1, 0)}});
    EXPECT_EQ(evaluate(*speed, {late}), nullptr);
    EXPECT_EQ(CSEngine::h_currentTime, known);
    EXPECT_DOUBLE_EQ(number(evaluate(*speed, {walking()})).value(), 50.0);
}

TEST_F(OperatorPlugins, MotionAddsNoTimeAndNoPositionHoweverOftenItAsksForWhatIsNotThere)
{
    constexpr int kMany = 1'000'000;
    CSOperatorInterfaceAbstract* speed = findOperator("speed");
    const Values late{walked({{100, at(0, 0)}, {101, at(1, 0)}})};
    for (int i = 0; i < kMany; ++i) {
        ASSERT_EQ(speed->evaluate(late), nullptr);
    }
    EXPECT_EQ(CSEngine::h_currentTime.size(), 11U);
    EXPECT_EQ(late.front()->m_history.size(), 1U);
}

} // namespace scenariomatch
