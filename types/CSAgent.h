#pragma once

#include "types/CSAllTypes.h"
#include "types/LateAttributes.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// One physical object known to recognition: a tracked (mobile) object or a constant object of the
// scene; also the pseudo-agent of type "Component" that stands for a recognised sub-event.
//
// Carries typed attributes by name, each with a bounded history of earlier values, and the frames
// in which the agent was seen. Shared by the agent table, bindings and recognised instances. The
// static members are the catalogue of object types, one for the whole process. Not safe to use from
// two threads at a time.
class CS_EXPORT CSAgent
{
public:
    CSAgent() = default;
    CSAgent(int id, bool constant);
    // Constant when the catalogue says so of the class. A class that the catalogue lacks is entered
    // as mobile.
    CSAgent(std::string className, int id);
    CSAgent(const CSAgent&) = default;
    CSAgent(CSAgent&&) = default;
    CSAgent& operator=(const CSAgent&) = default;
    CSAgent& operator=(CSAgent&&) = default;
    virtual ~CSAgent();

    // The current value. Inserts an empty entry when the agent lacks the attribute, and returns it.
    std::shared_ptr<CSBasicType> get(const std::string& name);
    // The earlier value stored at the frame position; inserts an empty entry there when there is
    // none. The attribute must exist with a value; an attribute without one gives an empty pointer.
    std::shared_ptr<CSBasicType> get(const std::string& name, int pos);
    // Always empty.
    std::vector<std::shared_ptr<CSBasicType>> getAll(const std::string& name) const;

    // Makes the value the current one; the value before it moves into its history, whose oldest
    // entry is dropped when there are more than m_historySize. Give a new value object each time.
    void set(const std::string& name, std::shared_ptr<CSBasicType> value, int pos);
    // The same for an attribute whose place in m_attributes is known: the current value's pointer,
    // which stays where it is for as long as the agent lives. The value must be there. Gives back
    // the one that drops out of the history, so that the caller may use the object again when
    // nobody else holds it; null when none does.
    static std::shared_ptr<CSBasicType>
    replace(std::shared_ptr<CSBasicType>& current, std::shared_ptr<CSBasicType> value, int pos);
    // Sets the attribute "Type" and m_type.
    void setType(const std::shared_ptr<CSString>& type, int pos);
    // Records that the agent is seen at the frame.
    void setFrameID(int frame);
    // The same for who keeps late attributes of the agent and no late frames: nothing is made up.
    void addFrame(int frame);

    // Enters the attributes, histories and frames that have not been made yet. get, set and
    // setFrameID do so themselves; who reads m_attributes or m_frames calls it first.
    void makeUp()
    {
        if (m_late.get() != nullptr) {
            m_late.get()->makeUp(*this);
        }
    }

    // Tells the engine that the agent is to be looked at again.
    void wakeUp()
    {
        if (m_sleepers != nullptr) {
            std::exchange(m_sleepers, nullptr)->push_back(m_engineID);
        }
    }

    // Adds the types of a description file to the catalogue.
    static void readAllObjects(const std::string& fileName);
    // Prints the catalogue on standard output.
    static void printAllObjects();

    // Read and written in every frame; they stand together, in one line of the cache.
    // The host's identifier; for a component pseudo-agent the recognised instance's.
    std::int32_t m_ID = 0;
    std::int32_t m_frameID = 0;
    // The engine's own identifier for the agent.
    std::int32_t m_engineID = 0;
    bool m_constant = false;
    // Whether "InterestedObjects" names it; the engine's own.
    bool m_interested = false;
    double m_confidence = 1.0;
    scenariomatch::LateAttributesHolder m_late;
    // Where the engine wants to read that an agent that sleeps has been woken; null for one that
    // does not sleep.
    std::vector<std::int32_t>* m_sleepers = nullptr;

    std::shared_ptr<CSInt> m_IDValue;
    std::string m_className = "Agent";
    // The classification last stored by setType.
    std::string m_type;
    std::map<int, int> m_frames;
    std::map<std::string, std::shared_ptr<CSBasicType>> m_attributes;
    // The recognised instances that it takes part in; the engine's own.
    std::map<int, int> m_instances;

    // Earlier values kept per attribute, and frames kept in m_frames.
    static std::int32_t m_historySize;
    static std::map<std::string, bool> m_constantObjects;
    static std::map<std::string, std::map<std::string, std::string>> m_allAttributes;
    // A type, then every type that derives from it.
    static std::map<std::string, std::vector<std::string>> m_allObjectTypes;
};
