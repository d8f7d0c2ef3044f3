// Labels, or events as the program writes them, and the figures of what was read held against
// itself. READ_LABELS tells which.
#include "app/EventRecord.h"
#include "app/Score.h"
#include "fuzz/FuzzFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace scenariomatch;
    const std::string text(textOf(data, size));
    const RecordReading reading = READ_LABELS != 0
                                      ? readLabels(text, "records")
                                      : readEvents(text, "records", RecordUnit::Millisecond);
    for (const EventRecord& record : reading.records) {
        if (record.begin > record.end) {
            __builtin_trap();
        }
    }
    // Whatever is refused is refused for a reason.
    if (reading.problem && reading.problem->empty()) {
        __builtin_trap();
    }
    ScoreLimits limits;
    limits.pairings = 10'000;
    score(reading.records, reading.records, {"A"}, {}, limits);
    return 0;
}
