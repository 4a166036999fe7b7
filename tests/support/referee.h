// The rules of chess as the arbiter of the tests: rules/position.h shares no code with the engine.
#pragma once

#include "rules/position.h"

namespace referee {

using namespace rules;

}  // namespace referee
