#include "label/composition.h"
