#pragma once

#include "host/CSynchronizer.h"
#include "host/HostExport.h"

#include <string>
#include <utility>
#include <vector>

// One recognised event, as the platform stores it. A value.
class CS_HOST_EXPORT rhmDataEvent
{
public:
    unsigned getTRXId() const { return m_id; }

    const std::string& getTRXName() const { return m_name; }

    const std::string& getTRXType() const { return m_type; }

    const std::string& getTRXAlarmLevel() const { return m_alarmLevel; }

    double getTRXConfidence() const { return m_confidence; }

    const CSynchronizer& getTRXBegin() const { return m_begin; }

    const CSynchronizer& getTRXEnd() const { return m_end; }

    // Seconds.
    double getTRXDuration() const { return m_duration; }

    double getTRXLatency() const { return m_latency; }

    // Identifiers of the persons involved, -1 when there are none.
    const std::vector<int>& getInvolvedActorIds() const { return m_involvedActorIds; }

    void setTRXId(unsigned id) { m_id = id; }

    void setTRXName(std::string name) { m_name = std::move(name); }

    void setTRXType(std::string type) { m_type = std::move(type); }

    void setTRXAlarmLevel(std::string level) { m_alarmLevel = std::move(level); }

    void setTRXConfidence(double confidence) { m_confidence = confidence; }

    void setTRXBegin(const CSynchronizer& begin) { m_begin = begin; }

    void setTRXEnd(const CSynchronizer& end) { m_end = end; }

    void setTRXDuration(double seconds) { m_duration = seconds; }

    void setTRXLatency(double seconds) { m_latency = seconds; }

    // Adds one involved actor; called once for each.
    void setInvolvedActorId(int id) { m_involvedActorIds.push_back(id); }

private:
    unsigned m_id = 0;
    std::string m_name;
    std::string m_type;
    std::string m_alarmLevel;
    double m_confidence = 0.0;
    CSynchronizer m_begin;
    CSynchronizer m_end;
    double m_duration = 0.0;
    double m_latency = 0.0;
    std::vector<int> m_involvedActorIds;
};
