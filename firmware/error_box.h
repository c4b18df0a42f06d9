// The box the file readers show for a run-time failure they catch: the
// failure's number followed directly by its description, with the stop sign,
// under the application's title.
#pragma once

namespace fc {

class Dialogs;
class RuntimeError;

void avisaError(Dialogs& dialogs, const RuntimeError& error);

}  // namespace fc
