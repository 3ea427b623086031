#pragma once
// The installation's devices without hardware: the simulated USB backend and an amplifier that
// serves a pseudo-terminal, TCP and that backend. The tools, the studio and tests run on it.

#include <Simulation/DeviceSimulator.h>
#include <Simulation/SimulatedUsb.h>
#include <Simulation/UsbAmplifier.h>
