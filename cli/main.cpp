#include <iostream>
#include <memory>

#include "cli/CommandLine.h"
#include "platform/linux/XdgFileLocations.h"

int main(int argc, char** argv)
{
    return quillmar::cli::runCommandLine(argc, argv, std::cin, std::cout, std::cerr,
        std::make_unique<quillmar::XdgFileLocations>());
}
