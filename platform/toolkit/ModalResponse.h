#pragma once

namespace platform::ModalResponse {

inline constexpr int OK = 1;
inline constexpr int Cancel = 0;
inline constexpr int Stop = -1000;  ///< ended without a code
inline constexpr int Abort = -1001; ///< the application quit, or there was nothing to run

} // namespace platform::ModalResponse
