// The judgement of a dump answer: the echo of the dump command, then eight
// lines of 32 hex digits, 39 characters apart, compared with the record the
// block makes. What lies between the lines and after the eighth is not
// looked at; an answer too short simply differs.
#pragma once

#include <string>

namespace fc {

// `orden` is the dump command sent; `registro` the ":80" record of the block,
// whose data start at position 10.
bool volcadoCoincide(const std::string& respuesta, const std::string& orden,
                     const std::string& registro);

}  // namespace fc
