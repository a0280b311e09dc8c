#pragma once

/// Codes with which sheets and modal runs end; a host may use others of its own.
namespace tljira::ModalResponse {

inline constexpr int OK = 1;        ///< the user agreed
inline constexpr int Cancel = 0;    ///< the user thought better of it
inline constexpr int Stop = -1000;  ///< ended without a code
inline constexpr int Abort = -1001; ///< the application quit, or there was nothing to run

} // namespace tljira::ModalResponse
