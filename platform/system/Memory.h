// How the program asks the operating system for memory.
#pragma once

// Takes memory in steps of 16 MB and so gives back little of what is freed: a library is read again after
// every change of database, and would else ask for the same pages anew. For the start of a program.
void TakeMemoryInLargeSteps();
