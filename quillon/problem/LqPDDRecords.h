#pragma once

// All records of a problem definition.
#include "quillon/problem/LqPDDBodyMap.h"
#include "quillon/problem/LqPDDInclude.h"
#include "quillon/problem/LqPDDMarkers.h"
#include "quillon/problem/LqPDDSysVar.h"
