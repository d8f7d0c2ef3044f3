#pragma once

#include "types/CSAllTypes.h"
#include "types/CSOperatorDescription.h"
#include "types/CSPlainValue.h"

#include <QtPlugin>

#include <memory>
#include <span>
#include <string>
#include <vector>

// An operator of the model language: what a constraint names, supplied by a plug-in as its root
// object.
//
// The object belongs to its plug-in, which stays loaded. All calls come from the thread that runs
// recognition. An operator must bear any number of arguments of any type, empty pointers included.
//
// Example: see operators/comparison/.
class CS_EXPORT CSOperatorInterfaceAbstract
{
public:
    CSOperatorInterfaceAbstract() = default;
    CSOperatorInterfaceAbstract(const CSOperatorInterfaceAbstract&) = delete;
    CSOperatorInterfaceAbstract(CSOperatorInterfaceAbstract&&) = delete;
    CSOperatorInterfaceAbstract& operator=(const CSOperatorInterfaceAbstract&) = delete;
    CSOperatorInterfaceAbstract& operator=(CSOperatorInterfaceAbstract&&) = delete;
    virtual ~CSOperatorInterfaceAbstract();

    // The value of the operator on the evaluated arguments; for a relation a CSBool with its
    // confidence.
    virtual std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments) = 0;
    // What the operator promises; nothing, unless it says more.
    virtual CSOperatorDescription describe() const;
    // The same as evaluate without value objects, for an operator whose description says m_plain;
    // no value, unless overridden. What it returns points to nothing but what its arguments do.
    virtual CSPlainValue evaluatePlain(std::span<const CSPlainValue> arguments);

    // The name by which constraints call it.
    std::string m_name;
    // Whether it relates times of sub-events.
    bool m_isTemporal = false;
};

Q_DECLARE_INTERFACE(
    CSOperatorInterfaceAbstract, "kestra.quorin.trx.CSOperatorInterfaceAbstract/1.0")
