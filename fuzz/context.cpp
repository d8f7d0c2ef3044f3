// A scene's context.
#include "fuzz/FuzzFile.h"
#include "host/rhmDataContext.h"

#include <QByteArray>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text = scenariomatch::textOf(data, size);
    rhmDataContext context;
    const QByteArray bytes(text.data(), static_cast<qsizetype>(text.size()));
    context.readText(bytes, QStringLiteral("context.xml"));
    for (const auto& error : context.errors()) {
        if (error.text().empty()) {
            __builtin_trap();
        }
    }
    return 0;
}
