#pragma once

namespace tools {

/// Makes every signal that ends a program call @p cleanUp before it does, crashes included; signals
/// that the caller ignores stay ignored. @p cleanUp may do only what a signal handler may.
void callBeforeEnding(void (*cleanUp)());

/// The same for the signals that come from outside, with a handler of the caller's choice that has
/// to end the program itself, by endBySignal() for example.
void handleEndingSignals(void (*handler)(int));

/// Ends the program as @p signal does by default. For signal handlers.
void endBySignal(int signal);

/// Gives the calling thread room to handle the signal that its overflowing stack raises.
void useSignalStack();

} // namespace tools
