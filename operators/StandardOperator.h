#pragma once

#include "operators/OperatorDefinition.h"
#include "types/CSOperatorInterfaceAbstract.h"

#include <QObject>
#include <QtPlugin>

#include <memory>
#include <span>
#include <vector>

namespace scenariomatch
{

// The root object of every standard operator's plug-in: the interface around the operator's
// definition.
//
// One compiled object, linked into each plug-in together with the source that gives the definition.
class StandardOperator : public QObject, public CSOperatorInterfaceAbstract
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0")
    Q_INTERFACES(CSOperatorInterfaceAbstract)

public:
    StandardOperator();

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments) override;
    CSOperatorDescription describe() const override;
    CSPlainValue evaluatePlain(std::span<const CSPlainValue> arguments) override;

private:
    OperatorDefinition m_definition;
};

} // namespace scenariomatch
