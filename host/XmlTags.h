#pragma once

#include "host/HostExport.h"

#include <QStringView>

#include <optional>

namespace scenariomatch
{

// QXmlStreamReader takes the square of the time for the attributes of a tag; no tag has more.
inline constexpr int kMostXmlAttributes = 64;

// Where the first tag with more than so many attributes begins; nothing when there is none. To be
// asked before a text goes to QXmlStreamReader, and good for no other purpose: what is no XML is
// looked at like XML.
CS_HOST_EXPORT std::optional<qsizetype>
findCrowdedTag(QStringView text, int mostAttributes = kMostXmlAttributes);

} // namespace scenariomatch
