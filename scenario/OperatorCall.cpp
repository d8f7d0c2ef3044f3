#include "scenario/OperatorCall.h"

#include <array>
#include <exception>
#include <new>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace scenariomatch
{

namespace
{

// What an engine leaves behind at its end is never destroyed: an engine may live as long as the
// program.
OperatorFailureHandler& failureHandler()
{
    static auto* const handler = new OperatorFailureHandler;
    return *handler;
}

OperatorNote& operatorNote()
{
    static OperatorNote note;
    return note;
}

OperatorTimes*& operatorTimes()
{
    static OperatorTimes* times = nullptr;
    return times;
}

// The kinds of the results of operators that were called with value objects while there was a
// handler.
using ResultKinds = std::unordered_map<const CSOperatorInterfaceAbstract*, std::uint32_t>;

ResultKinds& resultKinds()
{
    static auto* const kinds = new ResultKinds;
    return *kinds;
}

// One call of an operator, noted and timed where that is asked for.
class WatchedCall
{
public:
    explicit WatchedCall(const CSOperatorInterfaceAbstract& op)
        : m_op(op)
    {
        if (!areOperatorsWatched) [[likely]] {
            return;
        }
        if (operatorNote()) {
            operatorNote()(&op);
        }
        if (operatorTimes() != nullptr) {
            m_start = std::chrono::steady_clock::now();
        }
    }

    WatchedCall(const WatchedCall&) = delete;
    WatchedCall(WatchedCall&&) = delete;
    WatchedCall& operator=(const WatchedCall&) = delete;
    WatchedCall& operator=(WatchedCall&&) = delete;

    ~WatchedCall()
    {
        if (!areOperatorsWatched) [[likely]] {
            return;
        }
        if (operatorTimes() != nullptr) {
            (*operatorTimes())[&m_op] += std::chrono::steady_clock::now() - m_start;
        }
        if (operatorNote()) {
            operatorNote()(nullptr);
        }
    }

private:
    const CSOperatorInterfaceAbstract& m_op;
    std::chrono::steady_clock::time_point m_start;
};

struct NamedKind
{
    CSPlainValue::Kind kind;
    std::string_view name;
};

constexpr std::array kKindNames{
    NamedKind{CSPlainValue::Kind::None, "nothing"},
    NamedKind{CSPlainValue::Kind::Bool, "BOOL"},
    NamedKind{CSPlainValue::Kind::Number, "a number"},
    NamedKind{CSPlainValue::Kind::Point, "a point"},
    NamedKind{CSPlainValue::Kind::Interval, "INTERVAL"},
    NamedKind{CSPlainValue::Kind::Text, "STRING"},
    NamedKind{CSPlainValue::Kind::TimeStamp, "TIMESTAMP"},
    NamedKind{CSPlainValue::Kind::Points, "3DDPOINTS"},
    NamedKind{CSPlainValue::Kind::Other, "a value of another type"}};

std::string_view nameOf(CSPlainValue::Kind kind)
{
    return kKindNames.at(static_cast<std::size_t>(kind)).name;
}

constexpr std::uint32_t bitOf(CSPlainValue::Kind kind)
{
    return std::uint32_t{1} << static_cast<unsigned>(kind);
}

std::uint32_t kindsOf(const CSOperatorInterfaceAbstract& op)
{
    const auto [entry, isNew] = resultKinds().try_emplace(&op, kAnyKind);
    if (isNew) {
        entry->second = kindsOfResult(describeOperator(op).m_result);
    }
    return entry->second;
}

void reportFailure(const CSOperatorInterfaceAbstract& op, const std::string& what)
{
    if (failureHandler()) {
        failureHandler()(op, what);
    }
}

} // namespace

void reportOperatorFailure(const CSOperatorInterfaceAbstract& op)
{
    try {
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& failure) {
        reportFailure(op, failure.what());
    } catch (...) {
        reportFailure(op, "unknown exception");
    }
}

void setOperatorFailureHandler(OperatorFailureHandler handler)
{
    if (!handler) {
        resultKinds().clear();
    }
    failureHandler() = std::move(handler);
}

bool areOperatorsWatched = false;

void setOperatorNote(OperatorNote note)
{
    operatorNote() = std::move(note);
    areOperatorsWatched = operatorNote() || operatorTimes() != nullptr;
}

void setOperatorTimes(OperatorTimes* times)
{
    operatorTimes() = times;
    areOperatorsWatched = operatorNote() || times != nullptr;
}

std::uint32_t kindsOfResult(const std::string& type)
{
    using Kind = CSPlainValue::Kind;
    if (type == "BOOL") {
        return bitOf(Kind::Bool);
    }
    if (type == "INT" || type == "DOUBLE") {
        return bitOf(Kind::Number) | bitOf(Kind::None);
    }
    if (type.ends_with("POINT")) {
        return bitOf(Kind::Point) | bitOf(Kind::None);
    }
    for (const NamedKind& named : kKindNames) {
        if (named.name == type) {
            return bitOf(named.kind) | bitOf(Kind::None);
        }
    }
    return kAnyKind;
}

void reportWrongResult(const CSOperatorInterfaceAbstract& op, const CSPlainValue& value)
{
    reportFailure(
        op,
        "it gives " + std::string(nameOf(value.m_kind)) + " where its description says " +
            describeOperator(op).m_result);
}

std::shared_ptr<CSBasicType>
callOperator(CSOperatorInterfaceAbstract& op, std::vector<std::shared_ptr<CSBasicType>>&& arguments)
{
    std::shared_ptr<CSBasicType> value;
    try {
        const WatchedCall call(op);
        value = op.evaluate(std::move(arguments));
    } catch (...) {
        reportOperatorFailure(op);
        return std::make_shared<CSBool>(false);
    }
    if (failureHandler()) {
        const CSPlainValue plain(value.get());
        if (!isAmong(kindsOf(op), plain.m_kind)) {
            reportWrongResult(op, plain);
        }
    }
    return value;
}

CSPlainValue
callWatchedOperator(CSOperatorInterfaceAbstract& op, std::span<const CSPlainValue> arguments)
{
    try {
        const WatchedCall call(op);
        return op.evaluatePlain(arguments);
    } catch (...) {
        reportOperatorFailure(op);
        return CSPlainValue::boolean(false);
    }
}

CSOperatorDescription describeOperator(const CSOperatorInterfaceAbstract& op)
{
    try {
        const WatchedCall call(op);
        return op.describe();
    } catch (...) {
        reportOperatorFailure(op);
        return {};
    }
}

} // namespace scenariomatch
