#pragma once

// Ends the tool at once and cleanly when the user interrupts it (Ctrl-C), or the system asks it to end.
//
// What the tool writes it writes beside the old file and puts into its place in one step, and everything else is in
// memory: so a thread of its own waits for the signal, removes what is unfinished and ends the process, whatever the
// others are doing, a plug-in's code included. The exit code is that of a shell: 128 and the number of the signal, so 130
// for Ctrl-C.

namespace velt::tool {

// To be called once, before any other thread is started. Signals that whoever started the tool wants ignored stay
// ignored.
void endCleanlyWhenInterrupted();

// For a process that the tool has forked to become another program: signals end that one as they end any program.
void takeSignalsAgain();

}  // namespace velt::tool
