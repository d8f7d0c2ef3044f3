#include "types/CSOperatorInterfaceAbstract.h"

#include <QObject>

// An operator that says everything about itself.
class SynthFull : public QObject, public CSOperatorInterfaceAbstract
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0")
    Q_INTERFACES(CSOperatorInterfaceAbstract)

public:
    SynthFull()
    {
        m_name = "precedes";
        m_isTemporal = true;
    }

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> /*arguments*/) override
    {
        return {};
    }

    CSOperatorDescription describe() const override
    {
        CSOperatorDescription description;
        description.m_summary = "The first interval ends before the second begins.";
        description.m_arguments = {{"INTERVAL"}, {"INTERVAL"}, {"INT", "DOUBLE"}};
        description.m_requiredArguments = 2;
        description.m_result = "BOOL";
        description.m_pure = true;
        description.m_endsFirst = 0;
        return description;
    }
};

#include "synth_full.moc"
