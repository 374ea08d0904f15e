#include "shell/AppState.h"

#include <QCoreApplication>
#include <utility>

#include "shell/DesktopStoreHost.h"
#include "shell/program_directory.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {
AppState* living = nullptr;
}

AppState::Seat::Seat(AppState& state) : previous(std::exchange(living, &state)) {}

AppState::Seat::~Seat() {
  living = previous;
}

AppState::AppState()
    : programDirectory(programDirectoryOf(QCoreApplication::arguments().value(0))),
      links(std::make_unique<NetworkLinks>()),
      dialer(std::make_unique<NmcliDialer>()),
      storeHost(std::make_unique<DesktopStoreHost>(*this)) {
  store.host = storeHost.get();
  forms.productTitle = productTitle();
  inetQuotes.onBlocking = [this](bool blocking) {
    if (blocking)
      forms.gate.hold();
    else
      forms.gate.release();
  };
}

AppState::~AppState() {
  forms.registry.clear();  // while what forms may read still stands
  inetQuotes.onBlocking = nullptr;
}

AppState& app() {
  Q_ASSERT(living != nullptr);
  return *living;
}

QString productTitle() {
  return u"青禾云集电子商务系统"_s;
}

Version programVersion() {
  return {QINGHE_VERSION_MAJOR, QINGHE_VERSION_MINOR, QINGHE_VERSION_REVISION};
}

QString versionText() {
  const auto [major, minor, revision] = programVersion();
  return u"版本 %1.%2.%3"_s.arg(major).arg(minor).arg(revision);
}

}  // namespace qinghe
