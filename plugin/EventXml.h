#pragma once

#include "engine/CSScenarioInstance.h"
#include "plugin/StreamText.h"

#include <string_view>

// The elements of the event file. One frame:
//
//      <RHVideoFrame frameID="12" timeYear="2026" ... timeMs="160">
//       <ListMobileObjects/>
//       <ListActivities>
//        <Activity ID="7" name="Enter" ...> ... </Activity>
//       </ListActivities>
//      </RHVideoFrame>
namespace scenariomatch
{

void appendFrameStart(StreamText& text, const CSTimeStamp& now);
void appendActivity(StreamText& text, const CSScenarioInstance& instance);
void appendFrameEnd(StreamText& text);

// The value of an attribute: & < > " as entities, what is no character of XML as U+FFFD.
void appendEscaped(StreamText& text, std::string_view value);

} // namespace scenariomatch
