// An operator whose code leaves a trace as soon as it is loaded. Built with several tags.
#include "tests/plugins/LeavesATrace.h"
#include "types/CSOperatorInterfaceAbstract.h"

#include <QObject>

namespace
{

[[maybe_unused]] const int kTrace = leaveTrace(LIBRARY_NAME);

} // namespace

class TracedOperator : public QObject, public CSOperatorInterfaceAbstract
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OPERATOR_INTERFACE)
    Q_INTERFACES(CSOperatorInterfaceAbstract)

public:
    TracedOperator() { m_name = LIBRARY_NAME; }

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> /*arguments*/) override
    {
        return nullptr;
    }
};

#include "TracedOperator.moc"
