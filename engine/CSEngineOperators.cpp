#include "engine/CSEngine.h"
#include "engine/OperatorFile.h"
#include "engine/Recognition.h"
#include "scenario/AgentOperatorReader.h"
#include "types/TextFile.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QString>

#include <iostream>
#include <utility>

void CSEngine::setAllOperators()
{
    const QString directory = QString::fromStdString(m_operatorPluginPath);
    if (directory.isEmpty()) {
        return;
    }
    QDirIterator files(directory, QDir::Files);
    while (files.hasNext()) {
        const QString file = QFileInfo(files.next()).absoluteFilePath();
        CSOperatorInterfaceAbstract* const op = scenariomatch::loadOperator(file.toStdString()).op;
        if (op == nullptr) {
            continue;
        }
        addOperator(*op);
        if (m_debug) {
            std::cout << "Operator loaded: " << op->m_name << '\n';
        }
    }
}

void CSEngine::addOperator(CSOperatorInterfaceAbstract& op)
{
    m_operators[op.m_name] = &op;
}

void CSEngine::readOperatorAgent(const std::string& fileName)
{
    const auto text = scenariomatch::readTextFile(fileName);
    if (text) {
        auto declared = scenariomatch::readAgentOperators(fileName, *text, m_operators);
        m_agentOperators.insert(m_agentOperators.end(), declared.begin(), declared.end());
    }
    CConstraint::m_allOperators = m_operators;
}

void CSEngine::setFailureReport(std::function<void(const std::string&)> report)
{
    m_reportFailure = std::move(report);
}

void CSEngine::setSlowFrame(std::chrono::milliseconds bound)
{
    m_recognition->slow.setBound(bound);
}

void CSEngine::noteOperatorFailure(const CSOperatorInterfaceAbstract& op, const std::string& what)
{
    ++m_operatorFailures;
    if (m_failedOperators.insert(op.m_name).second && m_reportFailure) {
        m_reportFailure("Operator " + op.m_name + " failed: " + what);
    }
}
