#pragma once

namespace tljira {

/// Calls `function` once when the process begins to exit, in the thread that exits it; those that were given later come
/// first. From any thread; as often as it is called, as many calls.
///
/// What was made before this call still lives then. What was made after it, such as a variable inside a function, also
/// lives when it was made before the application object ended, as it does when `main` returns: a thread that the
/// function stops finds everything that it uses in its place. When the process exits while the application object
/// lives, such variables may be gone. What such a thread uses is therefore never destroyed.
///
/// A child process that a fork has made, and that does not begin another program, calls nothing.
void whenProcessExits(void (*function)());

} // namespace tljira
