#pragma once

#include <string>
#include <vector>

namespace scenariomatch
{

// A file of a run under the name of the option or parameter that names it. Standard input and
// output are "/dev/stdin" and "/dev/stdout".
struct RunFile
{
    std::string role;
    std::string path;
};

// Why the files cannot be written, "--events would overwrite hall.jsonl, which is read as
// --tracks": a regular file that is read as well, or written twice, by whatever path, would be
// lost. Empty when there is nothing of the kind; files without a path do not count.
std::string clashOf(const std::vector<RunFile>& read, const std::vector<RunFile>& written);

// Whether the file can be opened for writing, which makes it where it is missing and keeps what is
// in it. What is no regular file is left alone and counts as writable. The reason is in errno.
bool isWritable(const std::string& path);

} // namespace scenariomatch
