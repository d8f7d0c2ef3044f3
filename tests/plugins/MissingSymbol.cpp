// An operator that needs a function that nobody has.
#include "types/CSOperatorInterfaceAbstract.h"

#include <QObject>

extern "C" int nobodyHasThis();

class MissingSymbol : public QObject, public CSOperatorInterfaceAbstract
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0")
    Q_INTERFACES(CSOperatorInterfaceAbstract)

public:
    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> /*arguments*/) override
    {
        return std::make_shared<CSInt>(nobodyHasThis());
    }
};

#include "MissingSymbol.moc"
