/* The threshold table as read-only bytes: no initialisation at run time and no relocations. */
#if defined(__CET__)
#include <cet.h> /* marks this file fit for control-flow protection, which a library has only when all its files are */
#endif
#if defined(_WIN32)
    .section .rdata, "dr"
#else
    .section .rodata
    .hidden s_rawMaskData
    .type s_rawMaskData, %object
#endif
    .globl s_rawMaskData
    .balign 64
s_rawMaskData:
    .incbin DOTWEAVE_THRESHOLD_TABLE
#if defined(__ELF__)
    .size s_rawMaskData, . - s_rawMaskData
    .section .note.GNU-stack, "", %progbits
#endif
