#include "zbasic/zplugin_api.h"

ZEL_GENERAL_PLUGIN()
