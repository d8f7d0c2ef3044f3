#include "types/CSOperatorInterfaceAbstract.h"

#include <QObject>

// An operator that promises nothing.
class SynthPlain : public QObject, public CSOperatorInterfaceAbstract
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0")
    Q_INTERFACES(CSOperatorInterfaceAbstract)

public:
    SynthPlain() { m_name = "plain"; }

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> /*arguments*/) override
    {
        return {};
    }
};

#include "synth_plain.moc"
