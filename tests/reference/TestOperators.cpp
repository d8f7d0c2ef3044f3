#include "tests/reference/TestOperators.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <stdexcept>
#include <utility>

namespace scenariomatch
{

namespace
{

using PlainArguments = TestOperator::PlainArguments;
using Position = CSPlainValue::Position;
using Value = std::shared_ptr<CSBasicType>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

CSPlainValue truth(bool value, double confidence = 1.0)
{
    return CSPlainValue::boolean(value, confidence);
}

CSPlainValue argument(PlainArguments arguments, std::size_t position)
{
    return position < arguments.size() ? arguments[position] : CSPlainValue();
}

double number(PlainArguments arguments, std::size_t position)
{
    const CSPlainValue value = argument(arguments, position);
    return value.isNumber() ? value.m_number : kNaN;
}

bool isTrue(PlainArguments arguments, std::size_t position)
{
    const CSPlainValue value = argument(arguments, position);
    return value.isBool() && value.m_truth;
}

double confidence(PlainArguments arguments, std::size_t position)
{
    const CSPlainValue value = argument(arguments, position);
    return value.isBool() ? value.m_number : 1.0;
}

void append(std::string& text, double value)
{
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    text.append(buffer.data(), end.ptr);
}

void append(std::string& text, int value)
{
    std::array<char, 16> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    text.append(buffer.data(), end.ptr);
}

void append(std::string& text, const CSTimeStamp* stamp)
{
    if (stamp == nullptr) {
        text += '?';
        return;
    }
    append(text, stamp->m_frameID);
}

void appendPoint(std::string& text, const Position& point)
{
    text += '(';
    append(text, point.x);
    text += ' ';
    append(text, point.y);
    if (point.hasHeight) {
        text += ' ';
        append(text, point.z);
    }
    text += ')';
}

void appendPoints(std::string& text, const CS3DDPoints* points)
{
    text += "polygon ";
    append(text, points == nullptr ? 0 : static_cast<int>(points->m_points.size()));
}

void appendValue(std::string& text, const CSBasicType* object)
{
    const CSPlainValue value(object);
    switch (value.m_kind) {
    case CSPlainValue::Kind::None:
        text += '-';
        break;
    case CSPlainValue::Kind::Bool:
        text += value.m_truth ? "yes " : "no ";
        append(text, value.m_number);
        break;
    case CSPlainValue::Kind::Number:
        append(text, value.m_number);
        break;
    case CSPlainValue::Kind::Point:
        appendPoint(text, value.m_point);
        break;
    case CSPlainValue::Kind::Interval:
        text += '[';
        append(text, value.m_interval.start);
        text += ' ';
        append(text, value.m_interval.end);
        text += ']';
        break;
    case CSPlainValue::Kind::Text:
        text += '\'' + value.text()->m_value + '\'';
        break;
    case CSPlainValue::Kind::Points:
        appendPoints(text, value.points());
        break;
    case CSPlainValue::Kind::TimeStamp:
    case CSPlainValue::Kind::Other:
        text += object->m_type;
        break;
    }
}

CSPlainValue near(PlainArguments arguments, CallRecord& /*record*/)
{
    return truth(std::abs(number(arguments, 0) - number(arguments, 1)) <= 1.0);
}

CSPlainValue close(PlainArguments arguments, CallRecord& /*record*/)
{
    const double distance = std::abs(number(arguments, 0) - number(arguments, 1));
    return truth(distance <= 2.0, 1.0 / (1.0 + distance));
}

CSPlainValue left(PlainArguments arguments, CallRecord& /*record*/)
{
    return truth(number(arguments, 0) < number(arguments, 1), 0.9);
}

CSPlainValue maybe(PlainArguments arguments, CallRecord& /*record*/)
{
    const double value = number(arguments, 0);
    return truth(value < 4.0, std::fmod(value, 2.0) == 0.0 ? 0.5 : 0.8);
}

CSPlainValue sometimes(PlainArguments /*arguments*/, CallRecord& record)
{
    ++record.m_turns;
    return truth(record.m_turns % 3 != 0, 1.0 / (1.0 + record.m_turns % 2));
}

CSPlainValue moved(PlainArguments arguments, CallRecord& /*record*/)
{
    const CSPlainValue value = argument(arguments, 0);
    if (value.m_object == nullptr || value.m_object->m_history.empty()) {
        return truth(false);
    }
    const CSPlainValue last(value.m_object->m_history.rbegin()->second.get());
    return truth(value.isNumber() && last.isNumber() && last.m_number != value.m_number, 0.95);
}

bool isFinite(const Position& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

double between(const Position& a, const Position& b)
{
    const double dx = a.x - b.x;
    const double dy = a.y - b.y;
    const double dz = a.hasHeight && b.hasHeight ? a.z - b.z : 0.0;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

// To the nearest corner; 7 between polygons.
std::optional<double> distanceOf(const CSPlainValue& a, const CSPlainValue& b)
{
    if (a.isPoint() && b.isPoint()) {
        const bool known = isFinite(a.m_point) && isFinite(b.m_point);
        return known ? std::optional(between(a.m_point, b.m_point)) : std::nullopt;
    }
    if (a.points() != nullptr && b.points() != nullptr) {
        return 7.0;
    }
    const CS3DDPoints* corners = a.isPoint() ? b.points() : a.points();
    const CSPlainValue& point = a.isPoint() ? a : b;
    if (corners == nullptr || !point.isPoint() || !isFinite(point.m_point)) {
        return std::nullopt;
    }
    std::optional<double> nearest;
    for (const CS3DDPoint& corner : corners->m_points) {
        const double distance = between(point.m_point, {corner.m_x, corner.m_y, corner.m_z, false});
        nearest = std::min(nearest.value_or(distance), distance);
    }
    return nearest;
}

CSPlainValue apart(PlainArguments arguments, CallRecord& /*record*/)
{
    const auto distance = distanceOf(argument(arguments, 0), argument(arguments, 1));
    return distance ? CSPlainValue::number(*distance) : CSPlainValue();
}

// Longer one way round.
CSPlainValue farther(PlainArguments arguments, CallRecord& record)
{
    const CSPlainValue distance = apart(arguments, record);
    if (!distance.isNumber()) {
        return distance;
    }
    const bool isLonger = arguments[0].isPoint() && arguments[1].isPoint() &&
                          arguments[0].m_point.x > arguments[1].m_point.x;
    return CSPlainValue::number(distance.m_number + (isLonger ? 1.0 : 0.0));
}

CSPlainValue twice(PlainArguments arguments, CallRecord& record)
{
    const CSPlainValue distance = apart(arguments, record);
    return distance.isNumber() ? CSPlainValue::number(2.0 * distance.m_number) : distance;
}

CSPlainValue risky(PlainArguments arguments, CallRecord& record)
{
    if (!argument(arguments, 0).isPoint() || !argument(arguments, 1).isPoint()) {
        throw std::runtime_error("no points");
    }
    return apart(arguments, record);
}

CSPlainValue within(PlainArguments arguments, CallRecord& /*record*/)
{
    const CSPlainValue a = argument(arguments, 0);
    const CSPlainValue b = argument(arguments, 1);
    const auto distance = distanceOf(a, b);
    const bool holds = distance && *distance <= number(arguments, 2);
    return truth(holds, distance ? 1.0 / (1.0 + *distance) : 1.0);
}

CSPlainValue atMost(PlainArguments arguments, CallRecord& /*record*/)
{
    return truth(number(arguments, 0) <= number(arguments, 1));
}

CSPlainValue below(PlainArguments arguments, CallRecord& /*record*/)
{
    return truth(number(arguments, 0) < number(arguments, 1), 0.9);
}

CSPlainValue atLeast(PlainArguments arguments, CallRecord& /*record*/)
{
    return truth(number(arguments, 0) >= number(arguments, 1), 0.85);
}

CSPlainValue above(PlainArguments arguments, CallRecord& /*record*/)
{
    return truth(number(arguments, 0) > number(arguments, 1));
}

CSPlainValue both(PlainArguments arguments, CallRecord& /*record*/)
{
    return truth(
        isTrue(arguments, 0) && isTrue(arguments, 1),
        confidence(arguments, 0) * confidence(arguments, 1));
}

CSPlainValue either(PlainArguments arguments, CallRecord& /*record*/)
{
    return truth(
        isTrue(arguments, 0) || isTrue(arguments, 1),
        std::max(confidence(arguments, 0), confidence(arguments, 1)));
}

CSPlainValue but(PlainArguments arguments, CallRecord& /*record*/)
{
    return truth(isTrue(arguments, 0) && !isTrue(arguments, 1), confidence(arguments, 0));
}

CSPlainValue negation(PlainArguments arguments, CallRecord& /*record*/)
{
    return truth(!isTrue(arguments, 0), confidence(arguments, 0));
}

CSPlainValue value(PlainArguments arguments, CallRecord& /*record*/)
{
    return argument(arguments, 0);
}

CSPlainValue mirror(PlainArguments arguments, CallRecord& /*record*/)
{
    CSPlainValue point = argument(arguments, 0);
    if (!point.isPoint()) {
        return {};
    }
    point.m_object = nullptr;
    point.m_point.x = -point.m_point.x;
    return point;
}

CSPlainValue sum(PlainArguments arguments, CallRecord& /*record*/)
{
    const double total = number(arguments, 0) + number(arguments, 1);
    return std::isnan(total) ? CSPlainValue() : CSPlainValue::number(total);
}

CSPlainValue one(PlainArguments /*arguments*/, CallRecord& /*record*/)
{
    return CSPlainValue::number(1.0);
}

CSPlainValue inside(PlainArguments arguments, CallRecord& /*record*/)
{
    const CSPlainValue place = argument(arguments, 0);
    const CS3DDPoints* corners = argument(arguments, 1).points();
    if (!place.isPoint() || corners == nullptr || corners->m_points.empty()) {
        return truth(false);
    }
    const auto& points = corners->m_points;
    const auto [west, east] = std::minmax_element(
        points.begin(), points.end(), [](const auto& a, const auto& b) { return a.m_x < b.m_x; });
    return truth(place.m_point.x >= west->m_x && place.m_point.x <= east->m_x);
}

bool areIntervals(PlainArguments arguments)
{
    return argument(arguments, 0).isInterval() && argument(arguments, 1).isInterval();
}

CSPlainValue before(PlainArguments arguments, CallRecord& /*record*/)
{
    return truth(
        areIntervals(arguments) && *arguments[0].m_interval.end < *arguments[1].m_interval.start);
}

CSPlainValue after(PlainArguments arguments, CallRecord& /*record*/)
{
    return truth(
        areIntervals(arguments) && *arguments[1].m_interval.start <= *arguments[0].m_interval.end,
        0.95);
}

CSPlainValue overlap(PlainArguments arguments, CallRecord& /*record*/)
{
    return truth(
        areIntervals(arguments) && *arguments[0].m_interval.start <= *arguments[1].m_interval.end &&
        *arguments[1].m_interval.start <= *arguments[0].m_interval.end);
}

CSPlainValue lasting(PlainArguments arguments, CallRecord& /*record*/)
{
    const CSPlainValue interval = argument(arguments, 0);
    if (!interval.isInterval()) {
        return {};
    }
    return CSPlainValue::number(interval.m_interval.start->duration(interval.m_interval.end));
}

CSPlainValue grown(PlainArguments arguments, CallRecord& /*record*/)
{
    const CSPlainValue interval = argument(arguments, 0);
    if (!interval.isInterval() || interval.m_object == nullptr ||
        interval.m_object->m_history.empty()) {
        return truth(false);
    }
    const CSPlainValue last(interval.m_object->m_history.rbegin()->second.get());
    return truth(last.isInterval() && *last.m_interval.end < *interval.m_interval.end, 0.9);
}

CSPlainValue named(PlainArguments arguments, CallRecord& /*record*/)
{
    const CSString* first = argument(arguments, 0).text();
    const CSString* second = argument(arguments, 1).text();
    return truth(first != nullptr && second != nullptr && *first == *second);
}

CSPlainValue failing(PlainArguments arguments, CallRecord& /*record*/)
{
    if (number(arguments, 0) > 1.0) {
        throw std::runtime_error("failing");
    }
    return truth(true);
}

CSPlainValue empty(PlainArguments /*arguments*/, CallRecord& /*record*/)
{
    return {};
}

CSPlainValue unsure(PlainArguments /*arguments*/, CallRecord& /*record*/)
{
    return truth(true, kNaN);
}

CSPlainValue zero(PlainArguments /*arguments*/, CallRecord& /*record*/)
{
    return truth(true, 0.0);
}

Value odd()
{
    auto value = std::make_shared<CSBool>(true, 0.6);
    value->m_type = "ODD";
    return value;
}

Value sameObject()
{
    static const Value object = std::make_shared<CSBool>(true, 0.7);
    return object;
}

// The object that is the value: an argument handed on, or a new one.
Value boxed(const CSPlainValue& value, const std::vector<Value>& arguments)
{
    const auto same = std::find_if(arguments.begin(), arguments.end(), [&](const Value& object) {
        return object && object.get() == value.m_object;
    });
    if (same != arguments.end()) {
        return *same;
    }
    if (value.isBool()) {
        return std::make_shared<CSBool>(value.m_truth, value.m_number);
    }
    if (value.isNumber()) {
        return std::make_shared<CSDouble>(value.m_number);
    }
    if (value.isPoint() && value.m_point.hasHeight) {
        return std::make_shared<CS3DDPoint>(value.m_point.x, value.m_point.y, value.m_point.z);
    }
    if (value.isPoint()) {
        return std::make_shared<CS2DDPoint>(value.m_point.x, value.m_point.y);
    }
    return nullptr;
}

struct Row
{
    const char* name;
    TestOperator::Function function;
    const char* flavours;
    CSOperatorMeaning meaning = CSOperatorMeaning::Any;
    bool isTemporal = false;
    std::optional<std::size_t> endsFirst = std::nullopt;
};

const std::vector<Row>& rows()
{
    using enum CSOperatorMeaning;
    static const std::vector<Row> table{
        {"near", near, "iep"},
        {"close", close, "iep"},
        {"left", left, "iep"},
        {"maybe", maybe, "iep"},
        {"sometimes", sometimes, "i"},
        {"moved", moved, "iep"},
        {"apart", apart, "iepmn", Distance},
        {"from", farther, "iep"},
        {"far", twice, "ipmn", Distance},
        {"risky", risky, "ipmn", Distance},
        {"within", within, "iepmn", Nearness},
        {"<=", atMost, "iepmn", AtMost},
        {"<", below, "ipm", AtMost},
        {">=", atLeast, "iepmn", AtLeast},
        {">", above, "ipm", AtLeast},
        {"and", both, "iepmn", Conjunction},
        {"or", either, "iep"},
        {"but", but, "iep"},
        {"value", value, "iep"},
        {"mirror", mirror, "iep"},
        {"sum", sum, "iep"},
        {"number", one, "iep"},
        {"inside", inside, "iep"},
        {"before", before, "iep", Any, true, 0},
        {"after", after, "iep", Any, true, 1},
        {"overlap", overlap, "iep", Any, true},
        {"lasting", lasting, "iep"},
        // Not in flavour p: plain values of late attributes come without their histories.
        {"grown", grown, "ie"},
        {"named", named, "iep"},
        {"failing", failing, "iep"},
        {"empty", empty, "iep"},
        {"nan", unsure, "iep"},
        {"zero", zero, "iep"}};
    return table;
}

Flavour flavourOf(char letter)
{
    switch (letter) {
    case 'i':
        return Flavour::Impure;
    case 'e':
        return Flavour::Pure;
    case 'p':
        return Flavour::Plain;
    case 'm':
        return Flavour::Meant;
    default:
        return Flavour::PureMeant;
    }
}

void addRow(std::vector<std::unique_ptr<TestOperator>>& operators, const Row& row)
{
    for (const char* letter = row.flavours; *letter != '\0'; ++letter) {
        const Flavour flavour = flavourOf(*letter);
        auto op = std::make_unique<TestOperator>(
            std::string(row.name) + "_" + *letter, flavour, row.function);
        if (flavour == Flavour::Meant || flavour == Flavour::PureMeant) {
            op->m_description.m_meaning = row.meaning;
        }
        op->m_isTemporal = row.isTemporal;
        op->m_description.m_endsFirst = row.endsFirst;
        operators.push_back(std::move(op));
    }
}

} // namespace

CallRecord* TestOperator::s_record = nullptr;
int TestOperator::s_misuse = 0;

std::string describeValue(const CSBasicType* value)
{
    std::string text;
    appendValue(text, value);
    return text;
}

TestOperator::TestOperator(std::string name, Flavour flavour, Function function)
    : m_function(function)
{
    m_name = std::move(name);
    m_description.m_pure = flavour != Flavour::Impure;
    m_description.m_plain = flavour == Flavour::Plain || flavour == Flavour::Meant;
}

TestOperator::TestOperator(std::string name, Flavour flavour, ObjectFunction function)
    : TestOperator(std::move(name), flavour, Function())
{
    m_objectFunction = function;
}

// An argument is told with its frame and how much history it has.
void TestOperator::record(const std::vector<std::shared_ptr<CSBasicType>>& arguments) const
{
    std::string& calls = s_record->m_calls;
    calls += m_name;
    for (const Value& value : arguments) {
        calls += ' ';
        appendValue(calls, value.get());
        if (value) {
            calls += '@';
            append(calls, value->m_frame);
            calls += '/';
            append(calls, static_cast<int>(value->m_history.size()));
        }
    }
    calls += '\n';
}

std::shared_ptr<CSBasicType>
TestOperator::evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments)
{
    if (!m_description.m_pure) {
        record(arguments);
    }
    if (m_objectFunction != nullptr) {
        return m_objectFunction();
    }
    std::array<CSPlainValue, 4> views;
    const std::size_t count = std::min(arguments.size(), views.size());
    for (std::size_t i = 0; i < count; ++i) {
        views.at(i) = CSPlainValue(arguments[i].get());
    }
    return boxed(m_function(std::span(views.data(), count), *s_record), arguments);
}

CSOperatorDescription TestOperator::describe() const
{
    return m_description;
}

CSPlainValue TestOperator::evaluatePlain(std::span<const CSPlainValue> arguments)
{
    if (!m_description.m_plain) {
        ++s_misuse;
        return {};
    }
    return m_function(arguments, *s_record);
}

std::vector<std::unique_ptr<TestOperator>> makeTestOperators(Flavour negationFlavour)
{
    std::vector<std::unique_ptr<TestOperator>> operators;
    for (const Row& row : rows()) {
        addRow(operators, row);
    }
    operators.push_back(std::make_unique<TestOperator>("!", negationFlavour, negation));
    operators.push_back(std::make_unique<TestOperator>("odd_i", Flavour::Impure, odd));
    operators.push_back(std::make_unique<TestOperator>("odd_e", Flavour::Pure, odd));
    operators.push_back(std::make_unique<TestOperator>("same_i", Flavour::Impure, sameObject));
    operators.push_back(std::make_unique<TestOperator>("same_e", Flavour::Pure, sameObject));
    return operators;
}

} // namespace scenariomatch
