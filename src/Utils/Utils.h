#pragma once
// Utilities: application folders, string cutting, Base64, point and rectangle arithmetic, wildcard
// patterns.

#include <Utils/Base64.h>
#include <Utils/Folders.h>
#include <Utils/Geometry.h>
#include <Utils/PatternMatch.h>
#include <Utils/StringUtils.h>
