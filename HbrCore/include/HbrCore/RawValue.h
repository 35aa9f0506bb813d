#pragma once

#include <HbrUtils/RawValue.h>
