// The whole class library.

#pragma once

#include "sv/application.h"
#include "sv/ascii.h"
#include "sv/color.h"
#include "sv/control.h"
#include "sv/datetime.h"
#include "sv/dir.h"
#include "sv/export.h"
#include "sv/font.h"
#include "sv/gdi.h"
#include "sv/help.h"
#include "sv/image.h"
#include "sv/international.h"
#include "sv/linkhdl.h"
#include "sv/path.h"
#include "sv/resource.h"
#include "sv/string.h"
#include "sv/systemfunction.h"
#include "sv/window.h"
