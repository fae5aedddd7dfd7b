// What the class library exports, and what a program that links it imports.

#pragma once

// Stands before each class and function of this library that programs may use.
#if !defined(_WIN32)
#define SV_API
#elif defined(SV_BUILD)
#define SV_API __declspec(dllexport)
#else
#define SV_API __declspec(dllimport)
#endif
