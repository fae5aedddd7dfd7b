// The library's common base class.

#pragma once

#include "sv/linkhdl.h"
#include "zbasic/zexport.h"

// Base of readers, parsers and everything else that is handed around by pointer.
class ZBASIC_API ZelObject : public SV::LinkHdl {
public:
    virtual ~ZelObject();

    // For callers' consistency checks; here there is nothing to check.
    void check() const;
};
