#pragma once

#include "standin/Options.h"

#include <memory>
#include <string>
#include <string_view>

namespace standin {

/// Computes a digest over bytes as they pass.
class Digester
{
public:
    explicit Digester(Digest kind);
    ~Digester();
    Digester(Digester&&) noexcept;

    void add(std::string_view bytes);
    /// In lower-case hexadecimal digits; empty for Digest::none. Nothing can be added afterwards.
    std::string finish();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace standin
