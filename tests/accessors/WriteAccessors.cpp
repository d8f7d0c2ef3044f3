// Writes the accessor sources that the tests beside it compile: WriteAccessors OBJECTS FOLDER.
#include "types/CAllClasses.h"

#include <span>

int main(int argc, char** argv)
{
    const std::span<char*> arguments(argv, static_cast<std::size_t>(argc));
    if (arguments.size() != 3) {
        return 2;
    }
    CAllClasses types;
    types.read(arguments[1]);
    const std::string folder = arguments[2];
    const bool isWritten =
        types.write(folder) && types.writeAccessor(folder) && types.writeConversionClass(folder);
    return isWritten ? 0 : 1;
}
