// A relation as small as it can be: two numbers are equal.
#include "types/CSAllTypes.h"
#include "types/CSOperatorInterfaceAbstract.h"

#include <QObject>

class SameNumber : public QObject, public CSOperatorInterfaceAbstract
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0")
    Q_INTERFACES(CSOperatorInterfaceAbstract)

public:
    SameNumber() { m_name = "sameNumber"; }

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments) override
    {
        const bool hasTwo = arguments.size() == 2 && arguments[0] && arguments[1];
        return std::make_shared<CSBool>(hasTwo && equal(arguments[0], arguments[1]));
    }
};

#include "SameNumber.moc"
