#include "dotweave/maskdata_base.h"

#include "log.h"
#include "maskdata_base_unit.h"

#include <cstdio>

using namespace dotweave;

// The path comes by value, as hosts call it.
bool CMaskData_Base::OutputCutTable(const SCutTable* table, int count,
                                    std::string path) // NOLINT(performance-unnecessary-value-param)
{
    static constexpr char SCOPE[] = "bool __cdecl CMaskData_Base::OutputCutTable(const struct SCutTable "
                                    "*,int,class std::basic_string<char,"
                                    "struct std::char_traits<char>,class std::allocator<char> >)";
    std::FILE* file = std::fopen(path.c_str(), "wt");
    if (file == nullptr)
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
    for (int i = 0; i < count; ++i)
        static_cast<void>(std::fprintf(file, "%5d, %5d\n", table[i].lowerLimit, table[i].upperLimit));
    static_cast<void>(std::fclose(file)); // a dump that lost its end is seen in the dump
    return true;
}
