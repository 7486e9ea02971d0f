#include "shell/RunTimeFault.h"
