#include "app/EventWriterFactory.h"

#include "app/EventWriterCsv.h"
#include "app/EventWriterJsonLines.h"
#include "app/EventWriterText.h"

namespace scenariomatch
{

std::unique_ptr<EventWriter> makeEventWriter(EventFormat format, std::ostream& out)
{
    switch (format) {
    case EventFormat::Csv:
        return std::make_unique<EventWriterCsv>(out);
    case EventFormat::Text:
        return std::make_unique<EventWriterText>(out);
    case EventFormat::JsonLines:
        break;
    }
    return std::make_unique<EventWriterJsonLines>(out);
}

} // namespace scenariomatch
