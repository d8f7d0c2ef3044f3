// A small operator plug-in, for tests of loading: left below right, on numbers.

#include "types/CSOperatorInterfaceAbstract.h"

#include <QObject>

class BelowOperator : public QObject, public CSOperatorInterfaceAbstract
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0")
    Q_INTERFACES(CSOperatorInterfaceAbstract)

public:
    BelowOperator() { m_name = "below"; }

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments) override
    {
        const auto* left = dynamic_cast<const CSDouble*>(arguments.at(0).get());
        const auto* right = dynamic_cast<const CSDouble*>(arguments.at(1).get());
        return std::make_shared<CSBool>(
            left != nullptr && right != nullptr && left->m_value < right->m_value);
    }
};

#include "BelowOperator.moc"
