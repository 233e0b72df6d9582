// Writes the manual page and the completion for bash. The build runs it; it is not installed.
// usage: dotweave_manual PAGE COMPLETION

#include "bashcompletion.h"
#include "commandline.h"
#include "manualpage.h"

#include <fstream>
#include <iostream>

namespace {

bool File_Write(const char* path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file)
        std::cerr << "dotweave_manual: " << path << " cannot be written\n";
    return file.good();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: dotweave_manual PAGE COMPLETION\n";
        return 2;
    }
    const dotweave::CCommandLine line;
    return File_Write(argv[1], dotweave::ManualPage_Make(line.App())) &&
                   File_Write(argv[2], dotweave::BashCompletion_Make(line.App()))
               ? 0
               : 1;
}
