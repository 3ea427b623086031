#pragma once
// The recording UI services moved to the Testing library; this keeps the former path working for
// the suites that still include it.

#include <Testing/RecordingUIServices.h>
