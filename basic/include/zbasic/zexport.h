// What the library exports, and what a program that links it imports.

#pragma once

// Stands before every class and function of the library that programs may use.
#if !defined(_WIN32)
#define ZBASIC_API
#elif defined(ZBASIC_BUILD)
#define ZBASIC_API __declspec(dllexport)
#else
#define ZBASIC_API __declspec(dllimport)
#endif
