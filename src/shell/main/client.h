#pragma once

#include <functional>

class QApplication;

namespace qinghe {

class MDIFrmMAIN;

/// What must be said before the application object is made.
void prepareApplication();

/// Runs the client from its splash to its end; the exit code. `onStarted` is called when the main
/// window stands. A second start in the same program directory ends at once with 0.
int runClient(QApplication& application, const char* startedBy,
              const std::function<void(MDIFrmMAIN&)>& onStarted = nullptr);

}  // namespace qinghe
