#pragma once

#include <cstdint>
#include <string>

namespace scenariomatch
{

// Watches the event file of a process grow, frame by frame: the process itself does not say when it
// cannot write.
//
// A frame has arrived when the file has another size than before and ends with a frame. A device is
// asked whether it takes anything; of what is neither file nor device nothing can be told, and its
// frames count as written.
//
// Example:
//     EventFileWatch watch("events.xml");
//     process.performEventRecognition();
//     watch.addFrame(12);
class EventFileWatch
{
public:
    // Made when the process has begun the file.
    explicit EventFileWatch(std::string path);

    // Looks for the frame of this number, which the process has been handed.
    void addFrame(int number);

    // For a process that has ended in the middle of a frame: takes back what is not whole.
    void cut() const;
    // The same, and writes the closing tag, as the process would have.
    void close() const;

    std::uint64_t lost() const { return m_lost; }

    // Looks for the closing tag, when the process has ended. What has not been written, and what
    // helps; empty when all is there.
    std::string judgeEnd() const;

private:
    bool hasFrameArrived();

    std::string m_path;
    std::int64_t m_size = 0;
    std::uint64_t m_frames = 0;
    std::uint64_t m_lost = 0;
    int m_firstLost = 0;
};

} // namespace scenariomatch
