#pragma once

/// @file
/// The mark that makes a class or function part of the library's binary interface.

#if defined(__cplusplus) && __cplusplus < 202002L && !(defined(_MSVC_LANG) && _MSVC_LANG >= 202002L)
#    error "libzkflnetwork needs C++20: compile with -std=c++20"
#endif

/// @def ZKFLNETWORK_API
/// Marks what the shared library gives to others; all else stays hidden in it.

/// @def ZKFLNETWORK_API_EXTERN
/// The same where it is declared that a template is instantiated for others.

/// @def ZKFLNETWORK_API_TEMPLATE
/// The same on the definition of such an instance.

// Macros, because the language has no word for it. The build defines ZKFLNETWORK_EXPORTS while the
// library itself is compiled; on Windows the same mark then exports instead of importing.
//
// A class that is instantiated explicitly is marked where that is declared and where it is defined,
// since compilers differ in which of the two they want: ZKFLNETWORK_API_EXTERN stands on the
// declaration, ZKFLNETWORK_API_TEMPLATE on the definition. A member template of such a class has
// none of its marks and takes ZKFLNETWORK_API.
#if !defined(_WIN32)
#    define ZKFLNETWORK_API __attribute__((visibility("default")))
#    define ZKFLNETWORK_API_EXTERN ZKFLNETWORK_API
#    define ZKFLNETWORK_API_TEMPLATE
#elif !defined(ZKFLNETWORK_EXPORTS)
#    define ZKFLNETWORK_API __declspec(dllimport)
#    define ZKFLNETWORK_API_EXTERN ZKFLNETWORK_API
#    define ZKFLNETWORK_API_TEMPLATE
#elif defined(_MSC_VER)
#    define ZKFLNETWORK_API __declspec(dllexport)
#    define ZKFLNETWORK_API_EXTERN
#    define ZKFLNETWORK_API_TEMPLATE ZKFLNETWORK_API
#else
#    define ZKFLNETWORK_API __declspec(dllexport)
#    define ZKFLNETWORK_API_EXTERN ZKFLNETWORK_API
#    define ZKFLNETWORK_API_TEMPLATE
#endif
