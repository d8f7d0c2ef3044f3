#include "types/CSOperatorInterfaceAbstract.h"

#include <QObject>

// Whether the first of two points has the smaller x. In a model: (LeftOf(p->Position, q->Position))
class LeftOfOperator : public QObject, public CSOperatorInterfaceAbstract
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0")
    Q_INTERFACES(CSOperatorInterfaceAbstract)

public:
    LeftOfOperator() { m_name = "LeftOf"; }

    // Any arguments may come: none, too many, missing ones, values of other types.
    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments) override
    {
        if (arguments.size() != 2) {
            return std::make_shared<CSBool>(false);
        }
        const CSPlainValue a(arguments[0].get());
        const CSPlainValue b(arguments[1].get());
        const bool arePoints = a.isPoint() && b.isPoint();
        return std::make_shared<CSBool>(arePoints && a.m_point.x < b.m_point.x, 1.0);
    }

    CSOperatorDescription describe() const override
    {
        CSOperatorDescription description;
        description.m_summary = "Whether the first point is left of the second.";
        description.m_arguments = {{"3DDPOINT"}, {"3DDPOINT"}};
        description.m_requiredArguments = 2;
        description.m_result = "BOOL";
        description.m_pure = true;
        return description;
    }
};

#include "LeftOf.moc"
