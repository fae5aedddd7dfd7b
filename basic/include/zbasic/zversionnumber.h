// The version of this header set, for the preprocessor.

#pragma once

// A host that was built with these and asks the loaded library for its version
// (`Zel_GetVersionIdentifier`) learns whether the two belong together.
#define ZBASIC_VERSION_HIGH 1
#define ZBASIC_VERSION_LOW 8
#define ZBASIC_VERSION_PATCH 0
#define ZBASIC_VERSION_BUILD 230922
