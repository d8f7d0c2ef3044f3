// An operator whose root object cannot be made.
#include "types/CSOperatorInterfaceAbstract.h"

#include <QObject>

#include <stdexcept>

class ThrowsAtStart : public QObject, public CSOperatorInterfaceAbstract
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0")
    Q_INTERFACES(CSOperatorInterfaceAbstract)

public:
    ThrowsAtStart() { throw std::runtime_error("no operator today"); }

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> /*arguments*/) override
    {
        return nullptr;
    }
};

#include "ThrowsAtStart.moc"
