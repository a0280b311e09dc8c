#include "client/JAControllerDelegate.h"

// Here, so that one library has what the compiler makes of the class, and no delegate's has it again.
JAControllerDelegate::~JAControllerDelegate() = default;
