// True of every number but 99: there it makes the trouble that its second argument tells.
//     (trouble(p->ID, 2))
#include "types/CSAllTypes.h"
#include "types/CSOperatorInterfaceAbstract.h"

#include <QObject>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <unistd.h>

namespace
{

[[noreturn]] void hang()
{
    for (;;) {
        ::pause();
    }
}

void crash()
{
    // Whoever catches the signal to tell of it would change how the process ends.
    static_cast<void>(std::signal(SIGSEGV, SIG_DFL));
    static_cast<void>(std::raise(SIGSEGV));
}

void takeTime()
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(1050);
    while (std::chrono::steady_clock::now() < end) {
    }
}

std::shared_ptr<CSBasicType> makeTrouble(int kind)
{
    switch (kind) {
    case 1:
        crash();
        break;
    case 2:
        std::abort();
    case 3:
        std::exit(3); // NOLINT(concurrency-mt-unsafe): that is the trouble
    case 4:
        hang();
    case 5:
        throw std::runtime_error("no idea");
    case 6:
        return std::make_shared<CSString>("yes");
    case 7:
        takeTime();
        return std::make_shared<CSBool>(true);
    default:
        break;
    }
    return nullptr;
}

} // namespace

class TroubleOperator : public QObject, public CSOperatorInterfaceAbstract
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0")
    Q_INTERFACES(CSOperatorInterfaceAbstract)

public:
    TroubleOperator()
    {
        m_name = "trouble";
        if (std::getenv("TROUBLE_WHILE_LOADING") != nullptr) {
            std::abort();
        }
    }

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments) override
    {
        if (arguments.size() != 2) {
            return std::make_shared<CSBool>(false);
        }
        const CSPlainValue number(arguments[0].get());
        const CSPlainValue kind(arguments[1].get());
        if (number.isNumber() && number.m_number == 99.0 && kind.isNumber()) {
            return makeTrouble(static_cast<int>(kind.m_number));
        }
        return std::make_shared<CSBool>(true);
    }

    CSOperatorDescription describe() const override
    {
        CSOperatorDescription description;
        description.m_summary = "Makes trouble.";
        description.m_arguments = {{"INT"}, {"DOUBLE", "INT"}};
        description.m_requiredArguments = 2;
        description.m_result = "BOOL";
        return description;
    }
};

#include "TroubleOperator.moc"
