#pragma once

#include <string>

namespace standin {

/// A square PNG picture, `size` pixels wide.
std::string avatarPng(int size);

} // namespace standin
