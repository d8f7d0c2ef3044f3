#pragma once

#include <string>

namespace scenariomatch
{

// Writes a file beside the one of this name first and then puts it in its place, so that the file
// is whole, the old one or the new one, whatever happens. A link is followed; a device or a pipe is
// written to. False when that cannot be done; the reason is in errno.
bool replaceFile(const std::string& name, const std::string& text);

// Whether a file of this name could be replaced as far as that can be told before; the reason is in
// errno. Leaves nothing behind.
bool canReplaceFile(const std::string& name);

} // namespace scenariomatch
