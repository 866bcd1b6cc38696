#include "hub.h"
