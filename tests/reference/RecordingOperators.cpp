#include "tests/reference/RecordingOperators.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>

namespace scenariomatch
{

namespace
{

using Arguments = RecordingOperator::Arguments;
using Value = std::shared_ptr<CSBasicType>;

Value truth(bool value, double confidence = 1.0)
{
    return std::make_shared<CSBool>(value, confidence);
}

template <class T>
std::shared_ptr<T> argument(const Arguments& arguments, std::size_t position)
{
    return position < arguments.size() ? std::dynamic_pointer_cast<T>(arguments.at(position))
                                       : nullptr;
}

double number(const Arguments& arguments, std::size_t position)
{
    const auto value = argument<CSDouble>(arguments, position);
    return value ? value->m_value : std::numeric_limits<double>::quiet_NaN();
}

std::string numberText(double value)
{
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), end.ptr};
}

std::string stampText(const std::shared_ptr<CSTimeStamp>& stamp)
{
    return stamp ? std::to_string(stamp->m_frameID) : std::string("?");
}

Value nearby(const Arguments& arguments, CallRecord& /*record*/)
{
    return truth(std::abs(number(arguments, 0) - number(arguments, 1)) <= 1.0);
}

Value closeTo(const Arguments& arguments, CallRecord& /*record*/)
{
    const double distance = std::abs(number(arguments, 0) - number(arguments, 1));
    return truth(distance <= 2.0, 1.0 / (1.0 + distance));
}

Value leftOf(const Arguments& arguments, CallRecord& /*record*/)
{
    return truth(number(arguments, 0) < number(arguments, 1), 0.9);
}

Value maybe(const Arguments& arguments, CallRecord& /*record*/)
{
    const double value = number(arguments, 0);
    return truth(value < 4.0, std::fmod(value, 2.0) == 0.0 ? 0.5 : 0.8);
}

Value sometimes(const Arguments& /*arguments*/, CallRecord& record)
{
    ++record.m_turns;
    return truth(record.m_turns % 3 != 0, 1.0 / (1.0 + record.m_turns % 2));
}

Value moved(const Arguments& arguments, CallRecord& /*record*/)
{
    const auto value = argument<CSDouble>(arguments, 0);
    if (!value || value->m_history.empty()) {
        return truth(false);
    }
    const auto last = std::dynamic_pointer_cast<CSDouble>(value->m_history.rbegin()->second);
    return truth(last && last->m_value != value->m_value);
}

Value before(const Arguments& arguments, CallRecord& /*record*/)
{
    const auto first = argument<CSInterval>(arguments, 0);
    const auto second = argument<CSInterval>(arguments, 1);
    return truth(first && second && *first->m_end < *second->m_start);
}

Value after(const Arguments& arguments, CallRecord& /*record*/)
{
    const auto first = argument<CSInterval>(arguments, 0);
    const auto second = argument<CSInterval>(arguments, 1);
    return truth(first && second && *second->m_start <= *first->m_end, 0.95);
}

Value overlap(const Arguments& arguments, CallRecord& /*record*/)
{
    const auto first = argument<CSInterval>(arguments, 0);
    const auto second = argument<CSInterval>(arguments, 1);
    return truth(
        first && second && *first->m_start <= *second->m_end && *second->m_start <= *first->m_end);
}

Value both(const Arguments& arguments, CallRecord& /*record*/)
{
    const auto first = argument<CSBool>(arguments, 0);
    const auto second = argument<CSBool>(arguments, 1);
    if (!first || !second) {
        return truth(false);
    }
    return truth(first->m_value && second->m_value, first->m_confidence * second->m_confidence);
}

Value negation(const Arguments& arguments, CallRecord& /*record*/)
{
    const auto value = argument<CSBool>(arguments, 0);
    return truth(value && !value->m_value);
}

Value named(const Arguments& arguments, CallRecord& /*record*/)
{
    const auto first = argument<CSString>(arguments, 0);
    const auto second = argument<CSString>(arguments, 1);
    return truth(first && second && *first == *second);
}

Value failing(const Arguments& arguments, CallRecord& /*record*/)
{
    if (number(arguments, 0) > 1.0) {
        throw std::runtime_error("failing");
    }
    return truth(true);
}

void addTemporal(
    std::vector<std::unique_ptr<RecordingOperator>>& operators,
    const char* name,
    std::optional<std::size_t> endsFirst,
    const RecordingOperator::Function& function)
{
    operators.push_back(std::make_unique<RecordingOperator>(name, !endsFirst, function));
    operators.back()->m_isTemporal = true;
    operators.back()->m_description.m_endsFirst = endsFirst;
}

} // namespace

CallRecord* RecordingOperator::s_record = nullptr;

std::string describeValue(const std::shared_ptr<CSBasicType>& value)
{
    if (!value) {
        return "-";
    }
    if (const auto text = std::dynamic_pointer_cast<CSString>(value)) {
        return "'" + text->m_value + "'";
    }
    if (const auto decimal = std::dynamic_pointer_cast<CSDouble>(value)) {
        return numberText(decimal->m_value);
    }
    if (const auto yesNo = std::dynamic_pointer_cast<CSBool>(value)) {
        return (yesNo->m_value ? "yes " : "no ") + numberText(yesNo->m_confidence);
    }
    if (const auto interval = std::dynamic_pointer_cast<CSInterval>(value)) {
        return "[" + stampText(interval->m_start) + " " + stampText(interval->m_end) + "]";
    }
    return value->m_type;
}

RecordingOperator::RecordingOperator(std::string name, bool pure, Function function)
    : m_function(std::move(function))
{
    m_name = std::move(name);
    m_description.m_pure = pure;
}

std::shared_ptr<CSBasicType> RecordingOperator::evaluate(Arguments arguments)
{
    if (!m_description.m_pure) {
        std::string call = m_name;
        for (const Value& value : arguments) {
            call += " " + describeValue(value);
        }
        s_record->m_calls.push_back(call);
    }
    return m_function(arguments, *s_record);
}

CSOperatorDescription RecordingOperator::describe() const
{
    return m_description;
}

std::vector<std::unique_ptr<RecordingOperator>> makeRecordingOperators()
{
    struct Row
    {
        const char* name;
        bool pure;
        RecordingOperator::Function function;
    };

    const std::vector<Row> rows{
        {"near", true, nearby},
        {"close", false, closeTo},
        {"left", false, leftOf},
        {"maybe", true, maybe},
        {"sometimes", false, sometimes},
        {"moved", true, moved},
        {"and", true, both},
        {"!", false, negation},
        {"named", true, named},
        {"failing", false, failing},
        {"empty", true, [](const Arguments&, CallRecord&) { return Value(); }},
        {"number",
         true,
         [](const Arguments&, CallRecord&) { return std::make_shared<CSDouble>(1.0); }},
        {"nan", true, [](const Arguments&, CallRecord&) {
             return truth(true, std::numeric_limits<double>::quiet_NaN());
         }}};
    std::vector<std::unique_ptr<RecordingOperator>> operators;
    operators.reserve(rows.size());
    for (const Row& row : rows) {
        operators.push_back(std::make_unique<RecordingOperator>(row.name, row.pure, row.function));
    }
    addTemporal(operators, "before", 0, before);
    addTemporal(operators, "after", 1, after);
    addTemporal(operators, "overlap", std::nullopt, overlap);
    return operators;
}

} // namespace scenariomatch
