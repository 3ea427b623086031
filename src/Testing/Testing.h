#pragma once
// Test doubles for running the library without hardware or a user: UI services that record every
// message box and answer from a script, the simulated USB backend, and the device simulator (an
// amplifier over a pseudo-terminal, TCP and the simulated USB backend).

#include <Testing/DeviceSimulator.h>
#include <Testing/RecordingUIServices.h>
#include <Testing/SimulatedUsb.h>
#include <Testing/UsbAmplifier.h>
