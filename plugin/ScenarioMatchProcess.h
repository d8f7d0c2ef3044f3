#pragma once

#include "host/ContextElement.h"
#include "host/rhmAbstractProcessEventRecognition.h"
#include "plugin/RecognitionView.h"
#include "plugin/StreamText.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class CSAgent;
class CSEngine;
class CSScenarioInstance;

namespace scenariomatch
{
class ActorAgents;
class FeedWatch;
struct ActorState;
class ParameterFile;
} // namespace scenariomatch

// The process that recognises events in tracked actors by matching them against scenario models.
//
// Parameters have defaults; the parameter file that init() reads overrides them. Use init() once,
// then performEventRecognition() per frame; see rhmAbstractProcessEventRecognition. What happens is
// traced on standard output. Class-wide settings of the engine make one process at a time the
// supported use; all calls from one thread.
class ScenarioMatchProcess : public rhmAbstractProcessEventRecognition,
                             public scenariomatch::RecognitionView
{
public:
    ScenarioMatchProcess();
    ScenarioMatchProcess(const ScenarioMatchProcess&) = delete;
    ScenarioMatchProcess(ScenarioMatchProcess&&) = delete;
    ScenarioMatchProcess& operator=(const ScenarioMatchProcess&) = delete;
    ScenarioMatchProcess& operator=(ScenarioMatchProcess&&) = delete;
    // Closes the event file, whether or not it was ever written.
    ~ScenarioMatchProcess() override;

    // Registers the process type with the platform's factory; false when that refuses it.
    static bool registered();
    QString identifier() const override;
    // Copies no parameter.
    void copy(const ovkAbstractProcess& other) override;

    // Initialisation (ScenarioMatchProcessInit.cpp)

    // False when a text file breaks off where something must follow; the platform's log says which.
    // Missing files and faulty models are reported and do not stop it.
    bool init() override;
    // Replaces the context elements by those of the file, by none when it cannot be read. Returns
    // 0.
    int readContextualInformationFile(const std::string& path);
    void setListContextualElements(std::vector<ContextElement> elements);

    const std::vector<ContextElement>& getListContextualElements() const { return m_context; }

    // Frames (ScenarioMatchProcessFrame.cpp)

    // Recognises what happens in the current frame and appends it to the event file. Returns true.
    bool performEventRecognition() override;
    // 401 lying, 201 sitting, 301 hardly more than sitting, 104 standing; sizes in metres.
    int performPostureRecognition(double height, double width, double depth) const;
    // Lets recognised instances take over the start of an earlier one, where their models ask for
    // it.
    void processEventModelMiscellaneouClause();
    void storeEventList();

    // Queries (ScenarioMatchProcessQueries.cpp)

    Events getCurrentFrameEvents() const override;
    Events getAllFramesEvents() const override;
    std::string generateEventListStreamToNotify() const override;
    std::string generateEventListStorageStream() const override;
    void visitEvents(const EventVisitor& visit) const override;
    scenariomatch::RecognitionCounters counters() const override;
    int nextEventId() const override;
    void setNextEventId(int id) override;
    void visitModels(const ModelVisitor& visit) const override;
    void printPlans(std::ostream& out) const override;
    void setObserver(scenariomatch::RecognitionObserver* observer) override;

    const std::shared_ptr<CSEngine>& engine() const { return m_engine; }

    // Parameters (ScenarioMatchProcessParameters.cpp)

    // Applies what the file holds. Keys that are missing are told on standard error.
    void readEngineParametersFromFile(const std::string& path);
    // Every parameter by its key in the file; those without a key by the name of their setter.
    // Truth values are "true" and "false".
    std::vector<std::string> parameterNames() const override;
    std::optional<std::string> parameter(const std::string& name) const override;
    bool setParameter(const std::string& name, const std::string& value) override;

    bool getParamDebug() const { return m_debug; }

    void setParamDebug(bool isOn) { m_debug = isOn; }

    std::string getParamScenarioRecognitionObjectDescription() const { return m_objectDescription; }

    void setParamScenarioRecognitionObjectDescription(std::string fileName)
    {
        m_objectDescription = std::move(fileName);
    }

    std::string getParamScenarioRecognitionOperatorDescription() const
    {
        return m_operatorDescription;
    }

    void setParamScenarioRecognitionOperatorDescription(std::string fileName)
    {
        m_operatorDescription = std::move(fileName);
    }

    std::string getParamScenarioRecognitionModelFileName() const { return m_modelFileName; }

    void setParamScenarioRecognitionModelFileName(std::string fileName)
    {
        m_modelFileName = std::move(fileName);
    }

    std::string getParamOperatorPluginPath() const { return m_operatorPluginPath; }

    void setParamOperatorPluginPath(std::string path) { m_operatorPluginPath = std::move(path); }

    // Kept and reported; nothing depends on it.
    int getParamScenarioRecognitionMaximumScenarioLife() const { return m_maximumScenarioLife; }

    void setParamScenarioRecognitionMaximumScenarioLife(int seconds)
    {
        m_maximumScenarioLife = seconds;
    }

    int getParamConstProlongation() const { return m_constProlongation; }

    void setParamConstProlongation(int seconds) { m_constProlongation = seconds; }

    int getParamConstTimeSearch() const { return m_constTimeSearch; }

    void setParamConstTimeSearch(int seconds) { m_constTimeSearch = seconds; }

    int getParamHistorySize() const { return m_historySize; }

    void setParamHistorySize(int size) { m_historySize = size; }

    bool getParamSaveXML3File() const { return m_saveXML3File; }

    void setParamSaveXML3File(bool isOn) { m_saveXML3File = isOn; }

    virtual bool getParamSaveXML1File() const { return m_saveXML1File; }

    // Kept only: there is no such file.
    void setParamSaveXML1File(bool isOn) { m_saveXML1File = isOn; }

    std::string getParamXML3AlarmLevel() const { return m_xml3AlarmLevel; }

    void setParamXML3AlarmLevel(std::string level) { m_xml3AlarmLevel = std::move(level); }

    std::string getParamXML3FileName() const { return m_xml3FileName; }

    void setParamXML3FileName(std::string fileName) { m_xml3FileName = std::move(fileName); }

    std::string getParamXML1FileName() const { return m_xml1FileName; }

    void setParamXML1FileName(std::string fileName) { m_xml1FileName = std::move(fileName); }

    double getParamPersonSittingMax3dHeight() const { return m_personSittingMaxHeight; }

    void setParamPersonSittingMax3dHeight(double metres) { m_personSittingMaxHeight = metres; }

    void setRhmContextFilename(std::string fileName) { m_contextFileName = std::move(fileName); }

    // Comma-separated names of models.
    void setParamEvensToNotify(std::string names) { m_eventsToNotify = std::move(names); }

    double getParamBayesianRatio() const { return m_bayesianRatio; }

    void setParamBayesianRatio(double ratio) { m_bayesianRatio = ratio; }

    double getParamConfidencePrimitiveState() const { return m_confidencePrimitiveState; }

    void setParamConfidencePrimitiveState(double value) { m_confidencePrimitiveState = value; }

    double getParamConfidencePrimitiveEvent() const { return m_confidencePrimitiveEvent; }

    void setParamConfidencePrimitiveEvent(double value) { m_confidencePrimitiveEvent = value; }

    double getParamConfidenceCompositeState() const { return m_confidenceCompositeState; }

    void setParamConfidenceCompositeState(double value) { m_confidenceCompositeState = value; }

    double getParamConfidenceCompositeEvent() const { return m_confidenceCompositeEvent; }

    void setParamConfidenceCompositeEvent(double value) { m_confidenceCompositeEvent = value; }

    // How many candidates of a model are tried in a frame; 0, the default, for all. See
    // CSEngine::setCandidateLimit().
    unsigned getParamMaximumCandidates() const { return m_maximumCandidates; }

    void setParamMaximumCandidates(unsigned count) { m_maximumCandidates = count; }

private:
    struct NamedParameter;

    static const std::vector<NamedParameter>& namedParameters();
    void readText(
        const scenariomatch::ParameterFile& file,
        const std::string& key,
        std::string& value,
        const std::string& shown);
    void readFlag(const scenariomatch::ParameterFile& file, const std::string& key, bool& value);
    void readWhole(const scenariomatch::ParameterFile& file, const std::string& key, int& value);
    void readLastParameters(const scenariomatch::ParameterFile& file);

    void initOperators();
    void initLevels();
    void initEventFile();
    void initTime();
    void initModels();
    bool initContext();
    int enterContextElement(const ContextElement& element, int id);

    void setTime();
    void enterScene();
    void enterActors();
    scenariomatch::ActorState stateOf(const rhmDataActor& actor);
    int postureOf(const Information3D& size);
    void printModelsOfFrame() const;
    void noteNewInstances();
    void writeTrace();

    bool isReported(const CSScenarioInstance& instance) const;
    void appendFrame(scenariomatch::StreamText& text) const;
    QSharedPointer<rhmDataEvent> record(const CSScenarioInstance& instance) const;

    bool m_debug = false;
    std::string m_objectDescription;
    std::string m_operatorDescription;
    std::string m_modelFileName;
    std::string m_operatorPluginPath;
    int m_maximumScenarioLife = 3600;
    int m_constProlongation = 5;
    int m_constTimeSearch = 60;
    int m_historySize = 10;
    bool m_saveXML3File = false;
    bool m_saveXML1File = false;
    std::string m_xml3AlarmLevel = "NOTURGENT";
    std::string m_xml3FileName;
    std::string m_xml1FileName;
    double m_personSittingMaxHeight = 1.3;
    std::string m_contextFileName;
    std::string m_eventsToNotify;
    double m_bayesianRatio = 1.0;
    double m_confidencePrimitiveState = 0.1;
    double m_confidencePrimitiveEvent = 0.7;
    double m_confidenceCompositeState = 0.7;
    double m_confidenceCompositeEvent = 0.7;
    unsigned m_maximumCandidates = 0;

    std::shared_ptr<CSEngine> m_engine;
    std::unique_ptr<scenariomatch::ActorAgents> m_actorAgents;
    std::unique_ptr<scenariomatch::FeedWatch> m_feedWatch;
    std::vector<ContextElement> m_context;
    // The least alarm level that is reported.
    int m_reportLevel = 0;
    // The file that is being read, for the message when reading it fails.
    std::string m_currentFile;

    // Every frame so far had its milliseconds between 0 and 999, so that equal instants have equal
    // fields.
    bool m_clockIsPlain = true;
    // The id that the first new instance of the current frame has at least, and the next frame's.
    std::int64_t m_firstNewId = 0;
    std::int64_t m_nextId = 0;
    // Whether standard output takes anything; formatting for nobody is spared.
    bool m_isTracing = true;
    // Reused from frame to frame; the trace is gathered here and written at once.
    scenariomatch::StreamText m_trace;
    scenariomatch::StreamText m_frameText;
    mutable std::vector<scenariomatch::RecognisedObject> m_objects;
    mutable std::vector<scenariomatch::RecognisedPart> m_parts;
};

// What the plug-in registers with the factory.
std::unique_ptr<ovkAbstractProcess> createScenarioMatchProcess();
