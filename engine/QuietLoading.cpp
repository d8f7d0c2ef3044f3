#include "engine/QuietLoading.h"

#include <QString>
#include <QtGlobal>

#include <mutex>
#include <string_view>

namespace scenariomatch
{

namespace
{

// What all that live share. The handlers stay known when none lives: a handler of a plug-in may
// still pass messages on to ours.
struct Silence
{
    std::mutex mutex;
    int loaders = 0;
    // Whom ours stands in for.
    QtMessageHandler previous = nullptr;
    // Whom it stood in for at first, before any plug-in could know of it.
    QtMessageHandler first = nullptr;
};

Silence silence;

// Whom a message goes to; null for one to drop. One that comes back to us, from a handler that
// found ours before it installed itself, goes to the first handler and not round in a circle.
QtMessageHandler nextHandler(bool isLoaderWarning, bool isBack)
{
    const std::lock_guard lock(silence.mutex);
    if (isLoaderWarning && silence.loaders > 0) {
        return nullptr;
    }
    return isBack ? silence.first : silence.previous;
}

void handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    thread_local bool isInside = false;
    const bool isLoader = context.category != nullptr &&
                          std::string_view(context.category) == "qt.core.plugin.loader";
    const QtMessageHandler next = nextHandler(isLoader && type == QtWarningMsg, isInside);
    if (next == nullptr) {
        return;
    }
    const bool wasInside = isInside;
    isInside = true;
    next(type, context, text);
    isInside = wasInside;
}

} // namespace

QuietLoading::QuietLoading()
{
    const std::lock_guard lock(silence.mutex);
    if (silence.loaders++ > 0) {
        return;
    }
    // Whoever logs from now on waits in nextHandler() until it is known whom for.
    const QtMessageHandler before = qInstallMessageHandler(handle);
    silence.previous = before;
    silence.first = silence.first == nullptr ? before : silence.first;
}

QuietLoading::~QuietLoading()
{
    const std::lock_guard lock(silence.mutex);
    if (--silence.loaders > 0) {
        return;
    }
    const QtMessageHandler now = qInstallMessageHandler(silence.previous);
    if (now != handle) {
        qInstallMessageHandler(now);
    }
}

} // namespace scenariomatch
