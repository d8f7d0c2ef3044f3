#include "engine/OperatorFile.h"

#include "engine/QuietLoading.h"
#include "types/OperatorAbi.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QPluginLoader>
#include <QString>

#include <exception>
#include <optional>
#include <utility>

namespace scenariomatch
{

namespace
{

// The tag as text; nothing when there is none. Qt's meta object compiler puts it into a list.
std::optional<QString> tagIn(const QJsonObject& metaData)
{
    const auto entry = metaData.constFind(QLatin1String(CS_OPERATOR_ABI_KEY));
    if (entry == metaData.constEnd()) {
        return std::nullopt;
    }
    const QJsonArray values = entry->toArray();
    return values.size() == 1 ? values.first().toString() : entry->toString();
}

// Why none of the file's code may run; empty when it may.
std::string refusal(const QPluginLoader& loader)
{
    const QJsonObject metaData = loader.metaData();
    if (metaData.isEmpty()) {
        return "it is no plug-in";
    }
    const std::optional<QString> tag = tagIn(metaData);
    if (!tag || *tag == QLatin1String(CS_OPERATOR_ABI)) {
        return "";
    }
    const std::string other = tag->isEmpty() ? "something unknown" : tag->toStdString();
    return "it is built for " + other + ", this program for " CS_OPERATOR_ABI;
}

// The loader would look for a name without a folder elsewhere, too.
QString placeOf(const std::string& file)
{
    return QFileInfo(QString::fromStdString(file)).absoluteFilePath();
}

OperatorFile loadRoot(QPluginLoader& loader)
{
    QObject* const root = loader.instance();
    if (root == nullptr) {
        return {nullptr, loader.errorString().toStdString()};
    }
    auto* const op = qobject_cast<CSOperatorInterfaceAbstract*>(root);
    return {op, op == nullptr ? "its root object is no operator" : ""};
}

} // namespace

std::string operatorRefusal(const std::string& file)
{
    const QuietLoading quiet;
    return refusal(QPluginLoader(placeOf(file)));
}

OperatorFile loadOperator(const std::string& file)
{
    try {
        const QuietLoading quiet;
        QPluginLoader loader(placeOf(file));
        std::string reason = refusal(loader);
        return reason.empty() ? loadRoot(loader) : OperatorFile{nullptr, std::move(reason)};
    } catch (const std::exception& error) {
        return {nullptr, error.what()};
    } catch (...) {
        return {nullptr, "it threw something unknown"};
    }
}

} // namespace scenariomatch
