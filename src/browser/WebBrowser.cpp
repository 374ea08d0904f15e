#include "browser/WebBrowser.h"

#include <QDir>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QNetworkProxy>
#include <QStackedLayout>
#include <QStandardPaths>

#include "browser/PageMessage.h"
#include "browser/page_address.h"
#include "forms/Prompts.h"
#include "shell/AppState.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

// A page that talks on and on would keep the user from leaving it.
constexpr int mostBoxes = 20;
constexpr qsizetype longestTalk = 2000;

QString shortened(const QString& text) {
  return text.size() > longestTalk ? text.first(longestTalk) + u'…' : text;
}

// "a/b.png" and "..\b.png" name a file here, never a folder.
QString plainFileName(QString wish) {
  wish.replace(u'\\', u'/');
  QString name = wish.section(u'/', -1).trimmed();
  while (name.startsWith(u'.')) name.remove(0, 1);
  return name.isEmpty() ? u"download"_s : name.left(120);
}

// No page speaks in the program's name or in that of another.
QString speakerOf(const QUrl& origin) {
  return origin.host().isEmpty() ? u"网页"_s : origin.host();
}

QString filterOf(const QStringList& accepted) {
  const QMimeDatabase kinds;
  QStringList patterns;
  for (const QString& kind : accepted) {
    if (kind.startsWith(u'.')) {
      patterns << u'*' + kind;
    } else if (const auto known = kinds.mimeTypeForName(kind); known.isValid()) {
      patterns << known.globPatterns();
    } else {
      return {};
    }
  }
  patterns.removeDuplicates();
  return patterns.isEmpty() ? QString() : u"可上传的文件 ("_s + patterns.join(u' ') + u')';
}

}  // namespace

WebBrowser::WebBrowser(const QString& name, QWidget* parent)
    : QWidget(parent),
      stack_(new QStackedLayout(this)),
      blank_(new QWidget),
      message_(new PageMessage) {
  setObjectName(name);
  blank_->setBackgroundRole(QPalette::Base);
  blank_->setAutoFillBackground(true);
  stack_->addWidget(blank_);
  stack_->addWidget(message_);
  patience_.setSingleShot(true);
  connect(message_, &PageMessage::retry, this, [this] { openPage(again_); });
  connect(&patience_, &QTimer::timeout, this, [this] {
    page_->stop();
    whenFree([this] { showFailure(home_); });
  });
}

// The page goes while its owner still answers.
WebBrowser::~WebBrowser() {
  page_.reset();
}

void WebBrowser::Navigate(const QString& url) {
  asked_ = url;
  spoken_ = 0;
  if (isVisible()) {
    open();
    return;
  }
  // The page before is not what is asked for.
  showBlank();
  pending_ = !isBlankPage(url);
}

void WebBrowser::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  // The first page brings a whole engine; the screen comes up before it.
  if (pending_)
    QMetaObject::invokeMethod(
        this, [this] { whenFree([this] { open(); }); }, Qt::QueuedConnection);
}

void WebBrowser::open() {
  pending_ = false;
  if (isBlankPage(asked_)) {
    showBlank();
    return;
  }
  openPage(pageAddress(asked_));
}

void WebBrowser::openPage(const QUrl& address) {
  using Offer = PageMessage::Offer;
  setTitle({});
  const bool web = address.isValid() && address.scheme() != "ftp"_L1;
  if (!web) {
    showBlank();
    const auto offer = address.isValid() ? Offer::SystemBrowser : Offer::Nothing;
    message_->say(u"这里不能打开这个地址。"_s, address.isValid() ? QString() : shortened(asked_),
                  address, offer);
    stack_->setCurrentWidget(message_);
    return;
  }
  if (!page_) {
    if (auto* source = engine()) {
      page_ = source->makePage(*this, this);
      stack_->addWidget(page_->widget());
    }
  }
  if (!page_) {
    message_->say(u"这里不能直接显示网页。"_s, u"请用系统浏览器查看："_s, address,
                  Offer::SystemBrowser);
    stack_->setCurrentWidget(message_);
    return;
  }
  home_ = address;
  const Inet& settings = app().inetQuotes;
  QNetworkProxy::setApplicationProxy(pageProxy(settings.AccessType, settings.Proxy, address));
  stack_->setCurrentWidget(page_->widget());
  patience_.start(timeLimit);
  page_->go(address);
}

void WebBrowser::showBlank() {
  home_.clear();
  pending_ = false;
  patience_.stop();
  setTitle({});
  stack_->setCurrentWidget(blank_);
  if (page_) page_->go(QUrl(u"about:blank"_s));
}

void WebBrowser::showFailure(const QUrl& address) {
  patience_.stop();
  setTitle({});
  const bool web = pageAddress(address.toString()).isValid();
  // What failed may be a page that a link led to; away from its host a picture tab does not go.
  again_ = web && (!staysOnHost_ || isSameHost(address, home_)) ? address : home_;
  message_->say(u"网页打不开。"_s, u"对方没有回答，或者网络不通。"_s, address,
                web ? PageMessage::Offer::Both : PageMessage::Offer::Nothing);
  stack_->setCurrentWidget(message_);
}

void WebBrowser::setTitle(const QString& title) {
  if (title_ == title) return;
  title_ = title;
  emit titleChanged(title_);
}

// While a portal read blocks the program, pages wait with what they have to say.
void WebBrowser::whenFree(std::function<void()> step) {
  EventGate& gate = app().forms.gate;
  if (!gate.isHeld()) {
    step();
    return;
  }
  connect(
      &gate, &EventGate::opened, this, [step = std::move(step)] { step(); },
      static_cast<Qt::ConnectionType>(Qt::AutoConnection | Qt::SingleShotConnection));
}

bool WebBrowser::maySpeak() {
  return !home_.isEmpty() && !app().forms.gate.isHeld() && ++spoken_ <= mostBoxes;
}

bool WebBrowser::mayFetch(const QUrl& address) {
  if (!isOpenToPages(address)) return false;
  const QString scheme = address.scheme();
  const bool fromHost = scheme == "http"_L1 || scheme == "https"_L1 || scheme.startsWith("ws"_L1);
  if (!fromHost) return true;
  return !home_.isEmpty() && (!staysOnHost_ || isSameHost(address, home_));
}

void WebBrowser::pageReached(const QUrl& address) {
  if (home_.isEmpty()) return;
  whenFree([this, address] {
    if (home_.isEmpty()) return;
    patience_.stop();
    stack_->setCurrentWidget(page_->widget());
    emit reached(address.toString(QUrl::FullyEncoded));
  });
}

void WebBrowser::pageFailed(const QUrl& address) {
  if (home_.isEmpty()) return;
  whenFree([this, address] {
    if (!home_.isEmpty()) showFailure(address);
  });
}

void WebBrowser::pageTitled(const QString& title) {
  if (!home_.isEmpty()) setTitle(shortened(title));
}

bool WebBrowser::mayReplacePage(const QUrl& address) {
  if (!mayFetch(address) || !maySpeak()) return false;
  return prompts().ask(
             this,
             {.text = u"网页要打开另一个页面：\n%1\n打开吗？"_s.arg(shortened(address.toString())),
              .buttons = Buttons::YesNo,
              .mark = Mark::Question}) == Answer::Yes;
}

std::optional<QString> WebBrowser::downloadTo(const QUrl& address, const QString& name) {
  if (!maySpeak()) return {};
  const QString host = address.host();
  return prompts().saveFile(
      this, {.title = host.isEmpty() ? u"保存下载的文件"_s : u"保存从 %1 下载的文件"_s.arg(host),
             .directory = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation),
             .fileName = plainFileName(name)});
}

void WebBrowser::downloaded(const QString& path, bool whole) {
  whenFree([this, path, whole] {
    const QString shown = QDir::toNativeSeparators(path);
    prompts().ask(this,
                  {.text = whole ? u"下载完成：\n%1"_s.arg(shown) : u"下载失败：\n%1"_s.arg(shown),
                   .mark = whole ? Mark::None : Mark::Exclamation});
  });
}

std::optional<QString> WebBrowser::fileToUpload(const QStringList& accepted) {
  if (!maySpeak()) return {};
  return prompts().openFile(
      this, {.title = u"选择要上传的文件"_s,
             .directory = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation),
             .fileName = {},
             .filter = filterOf(accepted)});
}

void WebBrowser::tell(const QUrl& origin, const QString& text) {
  if (maySpeak()) prompts().ask(this, {.text = shortened(text), .title = speakerOf(origin)});
}

bool WebBrowser::confirm(const QUrl& origin, const QString& text) {
  return maySpeak() && prompts().ask(this, {.text = shortened(text),
                                            .title = speakerOf(origin),
                                            .buttons = Buttons::YesNo,
                                            .mark = Mark::Question}) == Answer::Yes;
}

}  // namespace qinghe
