// What the tests and the launcher that they have started agree on.
#pragma once

inline constexpr wchar_t launcherQuitEvent[] = L"Local\\quillpress-test-quit";
