#include "app/Oddities.h"

namespace scenariomatch
{

namespace
{

using enum Severity;

// In the order of the kinds. docs/statistics.md shows the same table.
constexpr std::array<OddityText, kOddities> kTexts{{
    {"malformed",
     Warning,
     "malformed line left out",
     "malformed lines left out",
     "Correct the lines that the messages name, or have the tracker write the format as it is "
     "described."},
    {"line-too-long",
     Warning,
     "line too long left out",
     "lines too long left out",
     "Write one frame a line; a line of more than 16 MiB mostly lacks its line feeds."},
    {"frame-goes-back",
     Warning,
     "frame out of order left out",
     "frames out of order left out",
     "Number the frames upwards and give each number once; put recordings that start anew into "
     "files of their own."},
    {"clock-goes-back",
     Warning,
     "clock that goes back replaced",
     "clocks that go back replaced",
     "Take the clock from a source that never goes back, such as UTC without daylight-saving "
     "time."},
    {"clock-jumps",
     Note,
     "clock more than an hour ahead used",
     "clocks more than an hour ahead used",
     "Make sure that the recording pauses there; events that were going on before the gap are over "
     "behind it."},
    {"bad-clock",
     Warning,
     "date that no calendar has carried over",
     "dates that no calendar has carried over",
     "Hand over dates and times of day that exist; the 30th of February counts as the 1st or 2nd "
     "of March."},
    {"duplicate-id",
     Warning,
     "repeated identifier left out",
     "repeated identifiers left out",
     "Give each object of a frame an identifier of its own; trackers of several cameras need "
     "separate ranges."},
    {"not-finite",
     Warning,
     "object with a number that is not finite left out",
     "objects with a number that is not finite left out",
     "Leave objects out, or their positions, where the tracker has no number for them."},
    {"out-of-range",
     Warning,
     "number out of range left out",
     "numbers out of range left out",
     "Check units, scale and homography; a point near the horizon has no place on the ground."},
    {"negative-box",
     Warning,
     "box of negative size left out",
     "boxes of negative size left out",
     "Give boxes as left, top, width and height; opposite corners in the wrong order come out "
     "negative."},
    {"too-many-objects",
     Warning,
     "object too many for its frame left out",
     "objects too many for their frame left out",
     "Raise the tracker's threshold; no frame takes more than 100000 objects."},
    {"unknown-class",
     Warning,
     "object of an unknown class left out",
     "objects of unknown classes left out",
     "Number the classes from 1 to 13 as the format has them, or use the format with ten columns."},
    {"untracked",
     Warning,
     "untracked object left out",
     "untracked objects left out",
     "Run a tracker over the detections: only objects with an identifier of 0 or more can take "
     "part."},
    {"not-considered",
     Note,
     "object marked as not to be considered left out",
     "objects marked as not to be considered left out",
     "Nothing needs doing; set the seventh column to 1 for objects that shall take part."},
    {"damaged-end",
     Error,
     "damaged end left out",
     "damaged ends left out",
     "Copy the file anew or have the tracker finish it; what follows the damage was not seen."},
    {"unknown-type",
     Note,
     "object of another type taken as Mobile",
     "objects of other types taken as Mobile",
     "Write PERSON or GROUP, in capitals, for what models call Person or Group; all else is a "
     "Mobile."},
    {"missing-size",
     Note,
     "object without a size taken as size 0",
     "objects without a size taken as size 0",
     "Give \"size\" or \"box\" where models ask for Width, Height, Depth or Posture; with size 0 a "
     "person sits."},
    {"missing-actor",
     Warning,
     "empty place in the list of objects passed over",
     "empty places in the list of objects passed over",
     "Have the platform hand over objects only; an empty pointer stands for nobody."},
    {"operator-failure",
     Error,
     "failure of an operator taken as false",
     "failures of operators taken as false",
     "Mend the operator that the messages name; what it throws counts as false and hides events."},
    {"candidate-cut",
     Error,
     "model cut short in a frame",
     "models cut short in a frame",
     "Raise --max-candidates, or give the model constraints that speak of fewer objects at a "
     "time."},
    {"engine-restart",
     Error,
     "engine that has ended begun anew",
     "engines that have ended begun anew",
     "Mend the operator that the messages name; each end costs a frame and all that was going on."},
    {"frame-not-in-file",
     Error,
     "frame not in the XML event file",
     "frames not in the XML event file",
     "Make room on the disk, or lift the limit on sizes of files, and run again; the events "
     "themselves are complete."},
}};

} // namespace

const OddityText& textOf(Oddity oddity)
{
    return kTexts.at(static_cast<std::size_t>(oddity));
}

std::string_view nameOf(Severity severity)
{
    constexpr std::array<std::string_view, 3> kNames{"note", "warning", "error"};
    return kNames.at(static_cast<std::size_t>(severity));
}

} // namespace scenariomatch
