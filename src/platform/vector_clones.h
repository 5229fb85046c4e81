// Compiling a function twice: for the vectors of every processor of the family and for wider ones,
// chosen when the program starts. For loops over doubles that the compiler vectorises; arithmetic
// gives the same either way.
#pragma once

#if defined(__x86_64__) && defined(__gnu_linux__)
#define KELO_VECTOR_CLONES __attribute__((target_clones("avx2", "default")))
/// The same with a third form for vectors of 64 bytes: where there is much to do with each element.
#define KELO_WIDE_CLONES __attribute__((target_clones("arch=x86-64-v4", "avx2", "default")))
#else
#define KELO_VECTOR_CLONES
#define KELO_WIDE_CLONES
#endif
