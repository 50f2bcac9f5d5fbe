#include "util/Console.h"

#include <cstdlib>
#include <iostream>

namespace Vorlan::console {

void Print(Stream stream, std::string_view text)
{
    std::ostream& out = stream == Stream::Out ? std::cout : std::cerr;
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.flush();
}

void PrintAndExit(Stream stream, std::string_view text)
{
    Print(stream, text);
    std::exit(EXIT_FAILURE);
}

} // namespace Vorlan::console
