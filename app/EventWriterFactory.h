#pragma once

#include "app/EventWriter.h"

#include <iosfwd>
#include <memory>

namespace scenariomatch
{

enum class EventFormat { JsonLines, Csv, Text };

// The stream must outlive the writer.
std::unique_ptr<EventWriter> makeEventWriter(EventFormat format, std::ostream& out);

} // namespace scenariomatch
