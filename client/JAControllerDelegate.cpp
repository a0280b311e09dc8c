#include "client/JAControllerDelegate.h"

// Defined here so that the class has its vtable and type information in this library alone.
JAControllerDelegate::~JAControllerDelegate() = default;
