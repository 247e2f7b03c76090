#ifndef UTILITY_INTERNAL_EARLYINIT_H
#define UTILITY_INTERNAL_EARLYINIT_H

// Marks the definition of a public variable that needs a constructor, so that it exists before the host's static
// objects. The shared library needs no help, since its initialisers run before those of whatever links it; in the static
// library, the order between source files is otherwise up to the linker. 101 is the earliest priority that is not
// kept for the compiler. Without the attribute (Mach-O has no priorities between files) only the link order decides, which
// is untested.
#if defined(__GNUC__) && !defined(__APPLE__)
#define UTILITY_EARLY_INIT __attribute__((init_priority(101)))
#else
#define UTILITY_EARLY_INIT
#endif

#endif
