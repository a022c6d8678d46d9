// Counts and limits the allocations of a test program. Linking the source replaces the program's
// operator new, which reaches into its libraries the ELF way only.
#pragma once

/// How many allocations there were so far.
int CountedAllocations();

/// Lets so many more allocations succeed and refuses all later ones; -1 takes the limit away.
void LimitAllocations(int allowed);
