#include "support/ClientFixture.h"

#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include "shell/frmMsgBox.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

/// Presses the button of a notice as soon as it stands.
class NoticeDismisser : public QObject {
 public:
  NoticeDismisser(QObject* parent, QStringList* seen) : QObject(parent), seen_(seen) {
    qApp->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* notice = dynamic_cast<frmMsgBox*>(watched);
    if (notice != nullptr && event->type() == QEvent::Show) {
      QTimer::singleShot(0, notice, [this, notice] {
        seen_->append(
            QStringList{notice->Label1->text(), notice->Label2->text(), notice->Label3->text()}
                .join(u'|'));
        notice->cmdOK->click();
      });
    }
    return false;
  }

 private:
  QStringList* seen_;
};

}  // namespace

ClientFixture::ClientFixture()
    : boxes(new ScriptedPrompts), links(new FakeLinks), dialer(new FakeDialer) {
  links->connected = {u"eth0"_s};
  state.programDirectory = store.directory();
  state.settings.setFilePath(settingsFolder.filePath(u"qinghe.ini"_s));
  state.forms.prompts.reset(boxes);
  state.links.reset(links);
  state.dialer.reset(dialer);
  state.gWebServer = u"HTTP://"_s + portal.host() + u"/"_s;
  state.gUnicode = 2;
  state.inetQuotes.AccessType = 1;
  state.gPageSize = 10;
}

ClientFixture::~ClientFixture() = default;

void ClientFixture::dismissNotices() {
  new NoticeDismisser(&state.tray, &notices);
}

void ClientFixture::beCompany(qint16 mode, qint16 level) {
  state.gLoggedIn = true;
  state.gLoginMode = mode;
  state.gUserLevel = level;
  state.gQiyeId = 25;
  state.gLocalId = 1;
  state.gUserNo = u"1001"_s;
  state.gUserName = u"青禾书店"_s;
  state.gHayeId = 3;
  state.gHayeName = u"图书"_s;
}

QByteArray ClientFixture::page(const QList<QStringList>& rows) {
  return ScriptedServer::table(rows);
}

QStringList ClientFixture::targets() const {
  QStringList result;
  for (const QByteArray& target : portal.requestTargets()) {
    result.append(QString::fromLatin1(target));
  }
  return result;
}

}  // namespace qinghe
