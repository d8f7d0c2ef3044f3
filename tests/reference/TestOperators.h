#pragma once

#include "types/CSOperatorInterfaceAbstract.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace scenariomatch
{

// What one side of a comparison asked of the operators that are not pure: every call in order, with
// its arguments, one line a call.
struct CallRecord
{
    std::string m_calls;
    // State that the operator `sometimes` keeps for the side.
    int m_turns = 0;
};

// A value as text that does not depend on addresses; "-" for none.
std::string describeValue(const CSBasicType* value);

// What an operator promises.
enum class Flavour : std::uint8_t {
    // Nothing: each call is recorded.
    Impure,
    // Purity alone.
    Pure,
    // Also evaluation without value objects.
    Plain,
    // Also the meaning, where there is one.
    Meant,
    // Purity and the meaning, without evaluation on plain values.
    PureMeant,
};

// One meaning in one flavour, written once as a function of plain values.
//
// The operators of one table serve both sides of a comparison, one side at a time.
class TestOperator : public CSOperatorInterfaceAbstract
{
public:
    using PlainArguments = std::span<const CSPlainValue>;
    using Function = CSPlainValue (*)(PlainArguments arguments, CallRecord& record);
    // For values that have no plain form.
    using ObjectFunction = std::shared_ptr<CSBasicType> (*)();

    TestOperator(std::string name, Flavour flavour, Function function);
    TestOperator(std::string name, Flavour flavour, ObjectFunction function);

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments) override;
    CSOperatorDescription describe() const override;
    CSPlainValue evaluatePlain(std::span<const CSPlainValue> arguments) override;

    CSOperatorDescription m_description;
    // The side at work; set before either side evaluates anything.
    static CallRecord* s_record;
    // How often evaluatePlain was asked of an operator that does not offer it.
    static int s_misuse;

private:
    void record(const std::vector<std::shared_ptr<CSBasicType>>& arguments) const;

    Function m_function = nullptr;
    ObjectFunction m_objectFunction = nullptr;
};

// The operators that models are written with. Every name but "!" ends with its flavour: _i impure,
// _e pure, _p plain, _m with meaning, _n with meaning and without plain evaluation.
//
//     near close left                two numbers; close and left with a confidence
//     maybe sometimes moved          fuzzy, dependent on the calls before it, on the history
//     apart far risky                a distance of two positions; far is longer one way round,
//     risky
//                                    throws for positions that are no points
//     within                         two positions and a number; its confidence is not symmetric
//     <= < >= >                      numbers
//     and or but !                   truth values; but says that the second is false
//     value mirror sum number        its argument itself, a point, a sum, a 1
//     inside                         a point in a polygon's bounding box
//     before after overlap           intervals; overlap does not say which ends first
//     lasting grown named            seconds and history of an interval, two texts
//     failing empty nan zero odd same throws, gives no value, gives NaN or 0 as confidence, gives a
//                                    truth value with another tag, gives one and the same object
//
// `negation` is the flavour of "!".
std::vector<std::unique_ptr<TestOperator>> makeTestOperators(Flavour negation);

} // namespace scenariomatch
