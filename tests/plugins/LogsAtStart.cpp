// An operator that logs when it is made.
#include "types/CSOperatorInterfaceAbstract.h"

#include <QObject>
#include <QtGlobal>

class LogsAtStart : public QObject, public CSOperatorInterfaceAbstract
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0")
    Q_INTERFACES(CSOperatorInterfaceAbstract)

public:
    LogsAtStart()
    {
        m_name = "logs_at_start";
        qWarning("an operator is made");
    }

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> /*arguments*/) override
    {
        return nullptr;
    }
};

#include "LogsAtStart.moc"
