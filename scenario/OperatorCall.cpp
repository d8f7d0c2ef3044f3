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
    failureHandler() = std::move(handler);
}

std::shared_ptr<CSBasicType>
callOperator(CSOperatorInterfaceAbstract& op, std::vector<std::shared_ptr<CSBasicType>>&& arguments)
{
    try {
        return op.evaluate(std::move(arguments));
    } catch (...) {
        reportOperatorFailure(op);
        return std::make_shared<CSBool>(false);
    }
}

CSOperatorDescription describeOperator(const CSOperatorInterfaceAbstract& op)
{
    try {
        return op.describe();
    } catch (...) {
        reportOperatorFailure(op);
        return {};
    }
}

} // namespace scenariomatch
