// Waits on the kernel objects shared with the display driver.
#pragma once

#include "platform/kernel_objects.h"
#include "platform/vb_types.h"

namespace fc {

struct CommonModule;

constexpr const char* kEventoRecursos = "Evento_Recursos_KorvaCOM";
constexpr Long kEsperaMutexMs = 15000;

// Waits up to 15 s for the mutex. -1 when it was not cleanly obtained (the
// wait timed out, or the mutex was abandoned); 0 otherwise, so a wait that
// fails outright, as on a null handle, counts as obtained.
Long EsperaMutex(CommonModule& c, Handle handle);

// Releases the mutex; the kernel's result, 0 for a null handle.
Long LiberaMutex(CommonModule& c, Handle handle);

// A sleep of `milisegundos` that the driver cuts short by signalling the
// event "Evento_Recursos_KorvaCOM". It blocks: no events run meanwhile.
// Errors are ignored, and it then returns at once.
void EsperaEventoRecursos(CommonModule& c, Long milisegundos);

}  // namespace fc
