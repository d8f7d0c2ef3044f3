// Says which plug-in it comes from. Built several times, so that two plug-ins offer one name.
#include "types/CSAllTypes.h"
#include "types/CSOperatorInterfaceAbstract.h"

#include <QObject>

class NamedOperator : public QObject, public CSOperatorInterfaceAbstract
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0")
    Q_INTERFACES(CSOperatorInterfaceAbstract)

public:
    NamedOperator() { m_name = OPERATOR_NAME; }

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> /*arguments*/) override
    {
        return std::make_shared<CSString>(PLUGIN_NAME);
    }
};

#include "NamedOperator.moc"
