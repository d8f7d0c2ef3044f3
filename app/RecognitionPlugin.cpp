#include "app/RecognitionPlugin.h"

#include "host/ovkAbstractProcessFactory.h"
#include "host/ovkPlugin.h"

#include <QDir>
#include <QFileInfo>
#include <QPluginLoader>

namespace scenariomatch
{

namespace
{

const QString& processType()
{
    static const QString type = QStringLiteral("ScenarioMatchProcess");
    return type;
}

// Judged by what stands in the file, before any of its code runs.
bool isPlatformPlugin(const QString& file)
{
    const QString interface = QPluginLoader(file).metaData().value(QLatin1String("IID")).toString();
    return interface == QLatin1String(OVK_PLUGIN_INTERFACE_ID);
}

QString findPlugin(const QString& path)
{
    if (!QFileInfo(path).isDir()) {
        return path;
    }
    const QDir folder(path);
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name)) {
        if (isPlatformPlugin(folder.absoluteFilePath(name))) {
            return folder.absoluteFilePath(name);
        }
    }
    return {};
}

// Empty when the plug-in has registered what it offers.
QString registerPlugin(const QString& file)
{
    QPluginLoader loader(file);
    auto* const plugin = qobject_cast<ovkPlugin*>(loader.instance());
    if (plugin == nullptr) {
        return loader.isLoaded() ? QStringLiteral("it is no plug-in of the platform")
                                 : loader.errorString();
    }
    return plugin->initialize() ? QString() : QStringLiteral("it cannot be initialised");
}

} // namespace

std::unique_ptr<rhmAbstractProcessEventRecognition>
createRecognitionProcess(const std::filesystem::path& path, std::string& error)
{
    const QString file = findPlugin(QString::fromStdString(path.string()));
    if (file.isEmpty()) {
        error = path.string() + ": there is no recognition plug-in in this folder";
        return nullptr;
    }
    ovkAbstractProcessFactory* const factory = ovkAbstractProcessFactory::instance();
    const QString fault =
        factory->types().contains(processType()) ? QString() : registerPlugin(file);
    if (!fault.isEmpty()) {
        error = file.toStdString() + ": " + fault.toStdString();
        return nullptr;
    }
    std::unique_ptr<ovkAbstractProcess> created = factory->create(processType());
    auto* const process = dynamic_cast<rhmAbstractProcessEventRecognition*>(created.get());
    if (process == nullptr) {
        error = file.toStdString() + ": it offers no process that recognises events";
        return nullptr;
    }
    static_cast<void>(created.release());
    return std::unique_ptr<rhmAbstractProcessEventRecognition>(process);
}

} // namespace scenariomatch
