#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

namespace scenariomatch
{

// The constants that models are read with, for all models between two "CONSTANT" declarations:
// however many these are, they keep one table, and one more per kind of model that lacks a
// threshold.
class SharedConstants
{
public:
    using Table = std::map<std::string, double>;

    explicit SharedConstants(Table constants)
        : m_table(std::make_shared<const Table>(std::move(constants)))
    {
    }

    const std::shared_ptr<const Table>& table() const { return m_table; }

    // The table with an entry for the kind, 0 where the constants lack it.
    const std::shared_ptr<const Table>& tableWithThreshold(const std::string& kind)
    {
        if (m_table->contains(kind)) {
            return m_table;
        }
        std::shared_ptr<const Table>& table = m_tablesByKind[kind];
        if (!table) {
            Table completed = *m_table;
            completed[kind] = 0.0;
            table = std::make_shared<const Table>(std::move(completed));
        }
        return table;
    }

private:
    std::shared_ptr<const Table> m_table;
    std::map<std::string, std::shared_ptr<const Table>> m_tablesByKind;
};

} // namespace scenariomatch
