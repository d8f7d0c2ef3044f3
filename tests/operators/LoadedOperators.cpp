#include "LoadedOperators.h"

#include <QPluginLoader>
#include <QString>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

namespace scenariomatch
{

namespace
{

std::vector<LoadedOperator> load()
{
    std::vector<LoadedOperator> operators;
    std::istringstream names(CS_STANDARD_OPERATORS);
    std::string name;
    while (std::getline(names, name, ',')) {
        LoadedOperator found;
        found.family = name.substr(0, name.find('/'));
        found.file = name.substr(name.find('/') + 1);
        const std::string path = CS_OPERATOR_FOLDER "/" + found.file + ".so";
        QPluginLoader loader(QString::fromStdString(path));
        found.object = qobject_cast<CSOperatorInterfaceAbstract*>(loader.instance());
        operators.push_back(found);
    }
    return operators;
}

bool isSameNumber(double left, double right)
{
    return left == right || (std::isnan(left) && std::isnan(right));
}

// An argument handed on is the same object on both ways; a result of the operator's own has none.
bool isSame(const Value& object, const CSPlainValue& plain, const Values& arguments)
{
    if (plain.m_object != nullptr || !object) {
        return object.get() == plain.m_object && (object || plain.isNone());
    }
    if (std::find(arguments.begin(), arguments.end(), object) != arguments.end()) {
        return false;
    }
    const CSPlainValue view(object.get());
    return view.m_kind == plain.m_kind && view.m_truth == plain.m_truth &&
           (view.isBool() || view.isNumber()) && isSameNumber(view.m_number, plain.m_number);
}

} // namespace

const std::vector<LoadedOperator>& loadedOperators()
{
    static const std::vector<LoadedOperator> kOperators = load();
    return kOperators;
}

Value evaluate(CSOperatorInterfaceAbstract& op, const Values& arguments)
{
    Value found = op.evaluate(arguments);
    const std::vector<CSPlainValue> plain = views(arguments);
    EXPECT_TRUE(isSame(found, op.evaluatePlain(plain), arguments)) << op.m_name;
    return found;
}

CSOperatorInterfaceAbstract* findOperator(const std::string& name)
{
    const auto& all = loadedOperators();
    const auto found = std::find_if(all.begin(), all.end(), [&](const LoadedOperator& candidate) {
        return candidate.object != nullptr && candidate.object->m_name == name;
    });
    return found != all.end() ? found->object : nullptr;
}

} // namespace scenariomatch
