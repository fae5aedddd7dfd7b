// What the library exports, and what a program that links it imports.

#pragma once

#if !defined(_WIN32)
#define ZBASIC_API
#elif defined(ZBASIC_BUILD)
#define ZBASIC_API __declspec(dllexport)
#else
#define ZBASIC_API __declspec(dllimport)
#endif
