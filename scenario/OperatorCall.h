#pragma once

#include "types/CSOperatorInterfaceAbstract.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

// The one place through which operators are called. Operators are strangers' code: what they throw
// goes no further.
namespace scenariomatch
{

using OperatorFailureHandler =
    std::function<void(const CSOperatorInterfaceAbstract& op, const std::string& what)>;

// Installs the handler that is told every time an operator throws or gives another value than its
// description says, process-wide; an empty one for none.
CS_EXPORT void setOperatorFailureHandler(OperatorFailureHandler handler);

// Installs who is told of every operator that is about to be called, and with null when it has come
// back, process-wide; an empty one for nobody.
using OperatorNote = std::function<void(const CSOperatorInterfaceAbstract* op)>;
CS_EXPORT void setOperatorNote(OperatorNote note);

// How long each operator has taken.
using OperatorTimes =
    std::map<const CSOperatorInterfaceAbstract*, std::chrono::steady_clock::duration>;

// Has the time that operators take added up there, process-wide; null for nowhere. Looking at the
// clock costs more than most operators do.
CS_EXPORT void setOperatorTimes(OperatorTimes* times);

// Whether calls are noted or timed.
CS_EXPORT extern bool areOperatorsWatched;

// The kinds of values that an operator may give, a bit for each, by the type that its description
// names: of a relation a CSBool, of all others no value as well.
CS_EXPORT std::uint32_t kindsOfResult(const std::string& type);
constexpr std::uint32_t kAnyKind = ~std::uint32_t{0};

constexpr bool isAmong(std::uint32_t kinds, CSPlainValue::Kind kind)
{
    return ((kinds >> static_cast<unsigned>(kind)) & 1U) != 0;
}

// Reports a value that is of none of the kinds that the operator's description names.
CS_EXPORT void reportWrongResult(const CSOperatorInterfaceAbstract& op, const CSPlainValue& value);

// The operator's value on the arguments; a false CSBool when it throws. A failed allocation passes.
CS_EXPORT std::shared_ptr<CSBasicType> callOperator(
    CSOperatorInterfaceAbstract& op, std::vector<std::shared_ptr<CSBasicType>>&& arguments);

// Reports the exception that is being handled; a failed allocation is thrown on.
CS_EXPORT void reportOperatorFailure(const CSOperatorInterfaceAbstract& op);

// The same as callOperatorPlain, with what else is to be done while calls are watched.
CS_EXPORT CSPlainValue
callWatchedOperator(CSOperatorInterfaceAbstract& op, std::span<const CSPlainValue> arguments);

// The plain value of an operator that promises one; a plain false when it throws. A failed
// allocation passes. Whether the value is of the right kind is for the caller to see.
inline CSPlainValue
callOperatorPlain(CSOperatorInterfaceAbstract& op, std::span<const CSPlainValue> arguments)
{
    if (areOperatorsWatched) [[unlikely]] {
        return callWatchedOperator(op, arguments);
    }
    try {
        return op.evaluatePlain(arguments);
    } catch (...) {
        reportOperatorFailure(op);
        return CSPlainValue::boolean(false);
    }
}

// What the operator says about itself; nothing when it throws. A failed allocation passes.
CS_EXPORT CSOperatorDescription describeOperator(const CSOperatorInterfaceAbstract& op);

} // namespace scenariomatch
