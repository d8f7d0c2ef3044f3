#include "types/CSOperatorInterfaceAbstract.h"

#include <QObject>

#include <stdexcept>

// An operator whose description throws.
class SynthThrows : public QObject, public CSOperatorInterfaceAbstract
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0")
    Q_INTERFACES(CSOperatorInterfaceAbstract)

public:
    SynthThrows() { m_name = "throws"; }

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> /*arguments*/) override
    {
        return {};
    }

    CSOperatorDescription describe() const override
    {
        throw std::runtime_error("no description today");
    }
};

#include "synth_throws.moc"
