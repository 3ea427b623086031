#pragma once
// Button classes: the vocabulary of what keypad buttons do, their encodings and XML form, and the
// finder that proposes a class for a command's name.

#include <ButtonClasses/ButtonClass.h>
#include <ButtonClasses/ButtonClassGroups.h>
#include <ButtonClasses/ButtonClassValues.h>
#include <ButtonClasses/ButtonPatterns.h>
