// What start-up asks of the system.

#pragma once

// Whether the newer default font is there.
bool Zel_IsAtLeastWindowsVista();

// The screen's vertical dots per inch as a multiple of 96; asked for once.
double Zel_GetSystemDPIScaleY();
