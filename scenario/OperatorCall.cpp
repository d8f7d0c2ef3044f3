#include "scenario/OperatorCall.h"

#include <exception>
#include <new>
#include <utility>

namespace scenariomatch
{

namespace
{

OperatorFailureHandler& failureHandler()
{
    static OperatorFailureHandler handler;
    return handler;
}

void reportFailure(const CSOperatorInterfaceAbstract& op, const std::string& what)
{
    if (failureHandler()) {
        failureHandler()(op, what);
    }
}

// Calls a stranger's code; what it throws is reported, and `otherwise` is the answer.
template <class Call, class Result>
Result guarded(const CSOperatorInterfaceAbstract& op, Call&& call, Result (*otherwise)())
{
    try {
        return call();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& failure) {
        reportFailure(op, failure.what());
    } catch (...) {
        reportFailure(op, "unknown exception");
    }
    return otherwise();
}

} // namespace

void setOperatorFailureHandler(OperatorFailureHandler handler)
{
    failureHandler() = std::move(handler);
}

std::shared_ptr<CSBasicType>
callOperator(CSOperatorInterfaceAbstract& op, std::vector<std::shared_ptr<CSBasicType>>&& arguments)
{
    return guarded<>(
        op,
        [&] { return op.evaluate(std::move(arguments)); },
        +[]() -> std::shared_ptr<CSBasicType> { return std::make_shared<CSBool>(false); });
}

CSPlainValue
callOperatorPlain(CSOperatorInterfaceAbstract& op, std::span<const CSPlainValue> arguments)
{
    return guarded<>(
        op,
        [&] { return op.evaluatePlain(arguments); },
        +[] { return CSPlainValue::boolean(false); });
}

CSOperatorDescription describeOperator(const CSOperatorInterfaceAbstract& op)
{
    return guarded<>(
        op, [&] { return op.describe(); }, +[] { return CSOperatorDescription{}; });
}

} // namespace scenariomatch
