// Loads the operator as recognition does and tries it on arguments, good and bad.
#include "engine/CSEngine.h"

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace
{

using Arguments = std::vector<std::shared_ptr<CSBasicType>>;

std::shared_ptr<CSBasicType> point(double x)
{
    return std::make_shared<CS3DDPoint>(x, 0.0, 0.0);
}

bool isTrue(CSOperatorInterfaceAbstract& op, const Arguments& arguments)
{
    const auto result = std::dynamic_pointer_cast<CSBool>(op.evaluate(arguments));
    return result != nullptr && result->m_value;
}

int failures = 0;

void expect(bool holds, const std::string& what)
{
    if (!holds) {
        std::cerr << "wrong: " << what << '\n';
        ++failures;
    }
}

} // namespace

int main()
{
    CSEngine engine;
    engine.m_operatorPluginPath = OPERATOR_FOLDER;
    engine.setAllOperators();
    const auto found = engine.operators().find("LeftOf");
    if (found == engine.operators().end()) {
        std::cerr << "LeftOf is not loaded from " OPERATOR_FOLDER "\n";
        return 1;
    }
    CSOperatorInterfaceAbstract& op = *found->second;
    expect(isTrue(op, {point(1), point(2)}), "1 is left of 2");
    expect(!isTrue(op, {point(2), point(1)}), "2 is not left of 1");
    expect(!isTrue(op, {point(1), point(1)}), "1 is not left of 1");
    expect(!isTrue(op, {}), "no arguments");
    expect(!isTrue(op, {point(1)}), "one argument");
    expect(!isTrue(op, {point(1), point(2), point(3)}), "three arguments");
    expect(!isTrue(op, {point(1), nullptr}), "a missing value");
    expect(!isTrue(op, {point(1), std::make_shared<CSInt>(2)}), "a value of another type");
    return failures == 0 ? 0 : 1;
}
