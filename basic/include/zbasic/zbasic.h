// The whole library.

#pragma once

#include "zbasic/zapp.h"
#include "zbasic/zcleanup.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zcoretime.h"
#include "zbasic/zdattime.h"
#include "zbasic/zevent.h"
#include "zbasic/zexport.h"
#include "zbasic/zfilelog.h"
#include "zbasic/zgui.h"
#include "zbasic/zinter.h"
#include "zbasic/zlocale.h"
#include "zbasic/zmlstring.h"
#include "zbasic/zobject.h"
#include "zbasic/zsequence.h"
#include "zbasic/zsgml.h"
#include "zbasic/ztextparser.h"
#include "zbasic/ztools.h"
#include "zbasic/ztrace.h"
#include "zbasic/zversion.h"
#include "zbasic/zversionnumber.h"
