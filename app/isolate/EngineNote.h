#pragma once

#include "scenario/OperatorCall.h"

#include <array>
#include <atomic>
#include <string>
#include <string_view>

namespace scenariomatch
{

// Where an engine in a process of its own notes which operator it calls, so that the program can
// tell when the process has ended within the call. In memory that both share; longer names are cut.
class EngineNote
{
public:
    EngineNote();
    EngineNote(const EngineNote&) = delete;
    EngineNote(EngineNote&&) = delete;
    EngineNote& operator=(const EngineNote&) = delete;
    EngineNote& operator=(EngineNote&&) = delete;
    ~EngineNote();

    // Has the calls of this process noted from now on.
    void begin();

    void clear();

    // The operator whose call has not come back; empty when there is none.
    std::string name() const;

private:
    struct Shared
    {
        std::atomic<bool> isInCall;
        std::array<char, 128> name;
    };

    // Null where there is no memory to be shared: nothing is noted then.
    Shared* m_shared;
};

} // namespace scenariomatch
