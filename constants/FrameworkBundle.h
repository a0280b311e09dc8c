#pragma once

/// Under this identifier the framework's interface files are embedded (see tljira::Bundle).
inline constexpr char frameworkBundleIdentifier[] = "qtv.lanternhollows.JAExtension";
