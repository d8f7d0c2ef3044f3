#include "host/rhmAbstractProcessEventRecognition.h"

rhmAbstractProcessEventRecognition::rhmAbstractProcessEventRecognition() = default;

rhmAbstractProcessEventRecognition::~rhmAbstractProcessEventRecognition() = default;

void rhmAbstractProcessEventRecognition::copy(const ovkAbstractProcess& other)
{
    rhmAbstractProcess::copy(other);
    if (const auto* process = dynamic_cast<const rhmAbstractProcessEventRecognition*>(&other)) {
        m_actors = process->m_actors;
        m_parameterFile = process->m_parameterFile;
        m_commonFilePath = process->m_commonFilePath;
    }
}
