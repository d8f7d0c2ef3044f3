#include "LoadedOperators.h"

#include <QPluginLoader>
#include <QString>

#include <algorithm>
#include <sstream>

namespace scenariomatch::samples
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

} // namespace

const std::vector<LoadedOperator>& loadedOperators()
{
    static const std::vector<LoadedOperator> kOperators = load();
    return kOperators;
}

CSOperatorInterfaceAbstract* findOperator(const std::string& name)
{
    const auto& all = loadedOperators();
    const auto found = std::find_if(all.begin(), all.end(), [&](const LoadedOperator& candidate) {
        return candidate.object != nullptr && candidate.object->m_name == name;
    });
    return found != all.end() ? found->object : nullptr;
}

} // namespace scenariomatch::samples
