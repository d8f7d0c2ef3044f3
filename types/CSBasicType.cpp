#include "types/CSBasicType.h"

CSBasicType::CSBasicType(Converted from)
    : m_type(from.source.m_type)
    , m_confidence(from.source.m_confidence)
    , m_flag(from.source.m_flag)
    , m_history(from.source.m_history)
{
}

CSBasicType::~CSBasicType() = default;
