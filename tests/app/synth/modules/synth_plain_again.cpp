#include "types/CSOperatorInterfaceAbstract.h"

#include <QObject>

// A second operator of the same name.
class SynthPlainAgain : public QObject, public CSOperatorInterfaceAbstract
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0")
    Q_INTERFACES(CSOperatorInterfaceAbstract)

public:
    SynthPlainAgain()
    {
        m_name = "plain";
        m_isTemporal = true;
    }

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> /*arguments*/) override
    {
        return {};
    }
};

#include "synth_plain_again.moc"
