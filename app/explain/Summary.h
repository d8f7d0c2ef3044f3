#pragma once

#include "app/explain/Evidence.h"
#include "app/explain/WhyNot.h"

#include <string>
#include <vector>

namespace scenariomatch
{

// "12.4 s": seconds from the start of the tracks.
std::string secondsText(const Moment& moment, const Moment& start);
// "p=3 z=Bank".
std::string objectsText(const std::vector<EventObject>& objects);
// "distance(p->Position, q->Position) < 2: 2.31, 0.31 too much".
std::string findingText(const Finding& finding);

// What is to be said of it, in whole sentences.
std::vector<std::string> summaryOf(const WhyNot& why);
// The same in one sentence: the first reason.
std::string reasonOf(const WhyNot& why);
std::vector<std::string> summaryOf(const Evidence& evidence);

} // namespace scenariomatch
