#pragma once

#include "tools/tour/Step.h"

namespace tessaloom::tour {

class Stage;

// The parts of the tour, in this order: each goes on where the one before it has left the stage.

/// A refused and an accepted login, an empty key, an upload, one that fails, and logging out.
Step uploadTour(Stage& stage);
/// Lists with and without documents, a download that is cancelled, one that fails and one that the editor opens.
Step downloadTour(Stage& stage);
/// The older window: its login sheet, its upload area, its list of everything.
Step classicTour(Stage& stage);

} // namespace tessaloom::tour
