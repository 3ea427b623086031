#pragma once
// Core vocabulary: zones and their byte encoding, sources, presets, device and keypad types, USB
// command and notification codes, device error codes and their messages.

#include <NorvaGlobal/Clock.h>
#include <NorvaGlobal/DebugOutput.h>
#include <NorvaGlobal/EnumNames.h>
#include <NorvaGlobal/EnumSet.h>
#include <NorvaGlobal/ErrorMessages.h>
#include <NorvaGlobal/EventPump.h>
#include <NorvaGlobal/Exceptions.h>
#include <NorvaGlobal/HexDigits.h>
#include <NorvaGlobal/PlatformResult.h>
#include <NorvaGlobal/SourceTables.h>
#include <NorvaGlobal/TickCount.h>
#include <NorvaGlobal/UIServices.h>
#include <NorvaGlobal/Vocabulary.h>
#include <NorvaGlobal/Zones.h>
