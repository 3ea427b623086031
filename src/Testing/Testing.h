#pragma once
// Test doubles for running the library without a user: UI services that record every message box
// and answer from a script.

#include <Testing/RecordingUIServices.h>
