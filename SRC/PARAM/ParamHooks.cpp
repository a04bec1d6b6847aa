#include "PARAM/ParamHooks.h"

ParamHooks_st GParamHooks;
