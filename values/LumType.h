// Gathers the value base class CLumType and every concrete kind.
#pragma once

#include "values/ArrayTypes.h"
#include "values/DoubleType.h"
#include "values/FreeFormType.h"
#include "values/LumTypeBase.h"
#include "values/NameTypes.h"
#include "values/RecordTypes.h"
#include "values/ScalarTypes.h"
#include "values/VectorTypes.h"
