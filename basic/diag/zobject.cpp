#include "zbasic/zobject.h"

ZelObject::~ZelObject() = default;

void ZelObject::check() const {}
