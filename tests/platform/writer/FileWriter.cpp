// Replaces the content of a file: file_writer PATH CONTENT
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Modules.h"

int main()
{
    const auto arguments = Ports::Modules::Get().Arguments();
    if (arguments.size() != 2)
        return 1;
    return TvlUtils::SystemIO::File::WriteAside(arguments[0], TvlPlatform::ToUtf8(arguments[1])) ? 0 : 1;
}
