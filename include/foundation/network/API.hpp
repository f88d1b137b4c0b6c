#pragma once

/// @file
/// The mark that makes a class or function part of the library's binary interface.

#if defined(__cplusplus) && __cplusplus < 202002L && !(defined(_MSVC_LANG) && _MSVC_LANG >= 202002L)
#    error "libzkflnetwork needs C++20: compile with -std=c++20"
#endif

/// @def ZKFLNETWORK_API
/// Marks what the shared library gives to others; all else stays hidden in it.

/// @def ZKFLNETWORK_API_TEMPLATE
/// The same where a template is instantiated for others, on the definition.

// Macros, because the language has no word for it. The build defines ZKFLNETWORK_EXPORTS while the
// library itself is compiled; on Windows the same mark then exports instead of importing. Where
// templates are concerned, Windows wants the mark on the explicit instantiation's definition and
// the ELF platforms want it on its declaration: ZKFLNETWORK_API_TEMPLATE stands on the definition.
#if defined(_WIN32)
#    if defined(ZKFLNETWORK_EXPORTS)
#        define ZKFLNETWORK_API __declspec(dllexport)
#        define ZKFLNETWORK_API_TEMPLATE __declspec(dllexport)
#    else
#        define ZKFLNETWORK_API __declspec(dllimport)
#        define ZKFLNETWORK_API_TEMPLATE
#    endif
#else
#    define ZKFLNETWORK_API __attribute__((visibility("default")))
#    define ZKFLNETWORK_API_TEMPLATE
#endif
