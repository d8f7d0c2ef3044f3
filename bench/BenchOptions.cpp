#include "bench/BenchOptions.h"

namespace scenariomatch
{

BenchOptions& benchOptions()
{
    static BenchOptions options;
    return options;
}

} // namespace scenariomatch
