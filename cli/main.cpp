#include <iostream>
#include <memory>

#include "cli/CommandLine.h"
#include "core/settings/SystemSettingsPorts.h"

int main(int argc, char** argv)
{
    return quillmar::cli::runCommandLine(argc, argv, std::cin, std::cout, std::cerr,
        quillmar::makeSystemSettingsPorts().fileLocations);
}
