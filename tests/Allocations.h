// Counts and limits the allocations of a test program. Linking the source replaces the program's
// operator new, which reaches into its libraries the ELF way only.
#pragma once

/// How many allocations there were so far.
int CountedAllocations();

/// How many allocations are not freed yet.
int LiveAllocations();

/// Lets so many more allocations succeed and refuses all later ones; -1 takes the limit away.
void LimitAllocations(int allowed);

/// The same, but refuses only one.
void RefuseOneAllocation(int allowed);

/// How many allocations were refused since the last of these calls.
int RefusedAllocations();
