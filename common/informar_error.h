// The common report of an error: a warning box for the operator and an entry
// in the log.
#pragma once

#include <string>

#include "platform/runtime_error.h"
#include "platform/vb_types.h"

namespace fc {

struct CommonModule;

// The two numbers the program raises for errors of its own.
constexpr Long kErrorPropio = 32000;
constexpr Long kErrorPropioAviso = 32001;

// Shows `numero`, " - " and `descripcion` in a box titled `nombre` and logs
// them under `nombre`. For the program's own numbers, 32000 and 32001, the
// box shows `descripcion` alone, and the log takes the source and the
// description of `enCurso`, the error being handled, with no number.
void InformarError(CommonModule& c, const std::string& nombre, Long numero,
                   const std::string& descripcion, const RuntimeError& enCurso);

// The same, for the error being handled: its number and description.
void InformarError(CommonModule& c, const std::string& nombre, const RuntimeError& enCurso);

}  // namespace fc
