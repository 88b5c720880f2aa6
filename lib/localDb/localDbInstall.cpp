#include "localDbInstall.h"

void localDbInstall() {}
