#include "engine/OperatorFile.h"

#include "types/OperatorAbi.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QPluginLoader>
#include <QString>
#include <QtGlobal>

#include <atomic>
#include <exception>
#include <optional>
#include <string_view>
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

// Keeps Qt from printing warnings of its own about files that are no sound plug-ins, while it
// lives; whatever else is logged goes where it went before. Of several at a time the first does it.
class QuietLoading
{
public:
    QuietLoading()
    {
        const QtMessageHandler before = qInstallMessageHandler(handle);
        m_isFirst = before != handle;
        if (m_isFirst) {
            previousHandler = before;
        }
    }

    QuietLoading(const QuietLoading&) = delete;
    QuietLoading(QuietLoading&&) = delete;
    QuietLoading& operator=(const QuietLoading&) = delete;
    QuietLoading& operator=(QuietLoading&&) = delete;

    ~QuietLoading()
    {
        if (m_isFirst) {
            qInstallMessageHandler(previousHandler);
        }
    }

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        const bool isLoader = context.category != nullptr &&
                              std::string_view(context.category) == "qt.core.plugin.loader";
        if (!isLoader || type != QtWarningMsg) {
            previousHandler.load()(type, context, text);
        }
    }

    static std::atomic<QtMessageHandler> previousHandler;
    bool m_isFirst = false;
};

std::atomic<QtMessageHandler> QuietLoading::previousHandler = nullptr;

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
    return refusal(QPluginLoader(QString::fromStdString(file)));
}

OperatorFile loadOperator(const std::string& file)
{
    try {
        const QuietLoading quiet;
        QPluginLoader loader(QString::fromStdString(file));
        std::string reason = refusal(loader);
        return reason.empty() ? loadRoot(loader) : OperatorFile{nullptr, std::move(reason)};
    } catch (const std::exception& error) {
        return {nullptr, error.what()};
    } catch (...) {
        return {nullptr, "it threw something unknown"};
    }
}

} // namespace scenariomatch
