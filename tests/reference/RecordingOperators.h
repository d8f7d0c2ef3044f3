#pragma once

#include "types/CSOperatorInterfaceAbstract.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace scenariomatch
{

// What two sides of a comparison asked of shared operators: the calls of those that are not pure,
// in order, with their arguments. The operators of one table serve both sides, one side at a time.
struct CallRecord
{
    std::vector<std::string> m_calls;
    // State that the operator `sometimes` keeps for each side.
    int m_turns = 0;
};

// A value as text that does not depend on addresses; "-" for none.
std::string describeValue(const std::shared_ptr<CSBasicType>& value);

// An operator made of a function. One that is not pure writes each call to the record of the side
// that is at work.
class RecordingOperator : public CSOperatorInterfaceAbstract
{
public:
    using Arguments = std::vector<std::shared_ptr<CSBasicType>>;
    using Function = std::function<std::shared_ptr<CSBasicType>(const Arguments&, CallRecord&)>;

    RecordingOperator(std::string name, bool pure, Function function);

    std::shared_ptr<CSBasicType> evaluate(Arguments arguments) override;
    CSOperatorDescription describe() const override;

    CSOperatorDescription m_description;
    // The side at work; set before either side evaluates anything.
    static CallRecord* s_record;

private:
    Function m_function;
};

// The operators that the differential tests write models with. Positions are numbers on a line.
//
//     near close left               two positions; close and left with a confidence
//     maybe sometimes moved         one value: fuzzy, dependent on the calls before it, on its
//     history before after overlap          intervals of components; overlap does not say which
//     ends first and ! named                   logic and a text failing empty number nan throws,
//     gives no value, gives no truth value, gives NaN as confidence
std::vector<std::unique_ptr<RecordingOperator>> makeRecordingOperators();

} // namespace scenariomatch
