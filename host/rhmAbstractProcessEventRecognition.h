#pragma once

#include "host/rhmAbstractProcess.h"
#include "host/rhmDataActor.h"
#include "host/rhmDataEvent.h"

#include <QList>
#include <QSharedPointer>

#include <string>

// Base of the processes that recognise events in tracked actors.
//
// The platform sets the paths and parameters, calls init() once, and then for every frame sets the
// clock and the actors, calls performEventRecognition() and collects the results. All calls from
// one thread.
//
// Example:
//     process.setParameterFile("lobby.yml");
//     process.setCommonFilePath("models/");
//     process.init();
//     for (...) {
//         process.getSynchronizer()->setFrameNumber(number);
//         process.setActors(actors);
//         process.performEventRecognition();
//         for (const auto& event : process.getCurrentFrameEvents()) { ... }
//     }
class CS_HOST_EXPORT rhmAbstractProcessEventRecognition : public rhmAbstractProcess
{
public:
    using Actors = QList<QSharedPointer<rhmDataActor>>;
    using Events = QList<QSharedPointer<rhmDataEvent>>;

    rhmAbstractProcessEventRecognition();
    rhmAbstractProcessEventRecognition(const rhmAbstractProcessEventRecognition&) = delete;
    rhmAbstractProcessEventRecognition(rhmAbstractProcessEventRecognition&&) = delete;
    rhmAbstractProcessEventRecognition&
    operator=(const rhmAbstractProcessEventRecognition&) = delete;
    rhmAbstractProcessEventRecognition& operator=(rhmAbstractProcessEventRecognition&&) = delete;
    ~rhmAbstractProcessEventRecognition() override;

    // Takes over clock, paths and actors, as far as the other has them.
    void copy(const ovkAbstractProcess& other) override;

    // Tracked actors of the current frame; they and the list are shared, not copied.
    void setActors(const Actors& actors) { m_actors = actors; }

    const Actors& actors() const { return m_actors; }

    void setParameterFile(const std::string& path) { m_parameterFile = path; }

    const std::string& getParameterFile() const { return m_parameterFile; }

    // A plain prefix of the other files' names: ends with a separator when it names a directory.
    void setCommonFilePath(const std::string& prefix) { m_commonFilePath = prefix; }

    const std::string& getCommonFilePath() const { return m_commonFilePath; }

    // Reads the parameter file and all that it names. False when the process cannot be used.
    virtual bool init() = 0;
    // Recognises what happens in the current frame. False when it could not.
    virtual bool performEventRecognition() = 0;

    // Events that ended in the current frame.
    virtual Events getCurrentFrameEvents() const = 0;
    // All events that are still remembered.
    virtual Events getAllFramesEvents() const = 0;
    // The current frame's events for notification, as compact text.
    virtual std::string generateEventListStreamToNotify() const = 0;
    // The current frame's element of the event file.
    virtual std::string generateEventListStorageStream() const = 0;

private:
    Actors m_actors;
    std::string m_parameterFile;
    std::string m_commonFilePath;
};
