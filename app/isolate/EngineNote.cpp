#include "app/isolate/EngineNote.h"

#include <algorithm>
#include <new>
#include <sys/mman.h>

namespace scenariomatch
{

EngineNote::EngineNote()
{
    void* const memory =
        ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    m_shared = memory == MAP_FAILED ? nullptr : new (memory) Shared{};
}

EngineNote::~EngineNote()
{
    if (m_shared != nullptr) {
        ::munmap(m_shared, sizeof(Shared));
    }
}

void EngineNote::begin()
{
    if (m_shared == nullptr) {
        return;
    }
    setOperatorNote([shared = m_shared](const CSOperatorInterfaceAbstract* op) {
        if (op != nullptr) {
            const std::size_t length = std::min(op->m_name.size(), shared->name.size() - 1);
            std::copy_n(op->m_name.data(), length, shared->name.data());
            shared->name.at(length) = '\0';
        }
        shared->isInCall.store(op != nullptr, std::memory_order_release);
    });
}

void EngineNote::clear()
{
    if (m_shared != nullptr) {
        m_shared->isInCall = false;
    }
}

std::string EngineNote::name() const
{
    if (m_shared == nullptr || !m_shared->isInCall.load(std::memory_order_acquire)) {
        return "";
    }
    // The last byte is never written.
    return m_shared->name.data();
}

} // namespace scenariomatch
