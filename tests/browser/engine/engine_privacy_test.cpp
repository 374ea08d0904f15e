#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QStandardPaths>

#include "browser/engine/EngineFixture.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

class EnginePrivacy : public EngineFixture {
 protected:
  /// Every file below the folders in which programs keep what they know of a user.
  static QStringList filesOfTheUser() {
    QStringList files;
    for (const auto place : {QStandardPaths::AppLocalDataLocation, QStandardPaths::AppDataLocation,
                             QStandardPaths::CacheLocation, QStandardPaths::AppConfigLocation}) {
      QDirIterator all(QStandardPaths::writableLocation(place), QDir::Files | QDir::Hidden,
                       QDirIterator::Subdirectories);
      while (all.hasNext()) files << all.next();
    }
    return files;
  }
};

TEST_F(EnginePrivacy, NothingIsKeptOnDisk) {
  const QStringList before = filesOfTheUser();
  serve(pages, {{"/a", reply("<script>localStorage.setItem('k','v');document.cookie='c=1;max-age="
                             "99999';indexedDB.open('d')</script>",
                             "text/html", "Cache-Control: max-age=99999\r\n")}});
  open(at(pages, u"/a"_s));
  EXPECT_EQ(js(u"localStorage.getItem('k')"_s), u"v"_s) << "pages work, as long as they are open";
  open(at(pages, u"/a"_s));
  delete browser;
  browser = new WebBrowser(u"WebBrowser1"_s, &window);
  EXPECT_EQ(filesOfTheUser(), before);
}

TEST_F(EnginePrivacy, TheNextPageViewKnowsNothingOfTheLastOne) {
  serve(pages, {{"/a", reply("a", "text/html", "Set-Cookie: secret=1; Max-Age=99999\r\n")},
                {"/next", reply("b")}});
  open(at(pages, u"/a"_s));
  open(at(pages, u"/a"_s));
  EXPECT_TRUE(pages.requests().constLast().contains("Cookie: secret=1"));
  delete browser;
  browser = new WebBrowser(u"WebBrowser1"_s);
  browser->show();
  // By its path: the view before may still have sent for its icon.
  browser->Navigate(at(pages, u"/next"_s));
  ASSERT_TRUE(waitFor([&] { return pages.requestTargets().contains("/next"); }));
  const auto index = pages.requestTargets().indexOf("/next");
  EXPECT_FALSE(pages.requests().at(index).contains("secret"));
}

TEST_F(EnginePrivacy, APageReachesNoLocalFile) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(u"secret.html"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("<script>parent.postMessage('read', '*')</script><p>secret</p>");
  file.close();
  const QByteArray local = "file://" + file.fileName().toUtf8();
  serve(pages,
        {{"/a", reply("<script>window.got='';addEventListener('message',e=>window.got+=e.data);"
                      "fetch('" +
                      local +
                      "').then(r=>r.text()).then(t=>window.got+=t,"
                      "()=>window.refused=1)</script><iframe src='" +
                      local +
                      "'></iframe>"
                      "<a id=go href='" +
                      local + "'>file</a>")}});
  open(at(pages, u"/a"_s));
  ASSERT_TRUE(waitFor([&] { return js(u"window.refused"_s).toInt() == 1; }));
  click(u"#go"_s);
  js(u"location.href='%1'"_s.arg(QString::fromUtf8(local)));
  EXPECT_EQ(js(u"window.got"_s), QString());
  EXPECT_EQ(js(u"location.href"_s), at(pages, u"/a"_s));
  EXPECT_EQ(reached.size(), 1);
}

TEST_F(EnginePrivacy, ARedirectToALocalFileLeadsNowhere) {
  serve(pages, {{"/r", reply("", "text/html", "Location: file:///etc/hostname\r\n", "302 Found")}});
  window.show();
  browser->Navigate(at(pages, u"/r"_s));
  ASSERT_TRUE(waitFor([&] { return words() == u"网页打不开。"_s; }));
  EXPECT_EQ(reached, QStringList());
}

TEST_F(EnginePrivacy, APageFindsNoDoorIntoTheProgram) {
  serve(pages, {{"/a", reply("a")}});
  open(at(pages, u"/a"_s));
  EXPECT_EQ(js(u"typeof qt + typeof QWebChannel + typeof external.AddSearchProvider"_s)
                .toString()
                .left(18),
            u"undefinedundefined"_s);
}

TEST_F(EnginePrivacy, APageMayNotListenOrLook) {
  serve(pages, {{"/a", reply("a")}});
  open(at(pages, u"/a"_s));
  js(u"window.said='';navigator.geolocation.getCurrentPosition(()=>window.said='yes',"
     "()=>window.said='no')"_s);
  EXPECT_TRUE(waitFor([&] { return js(u"window.said"_s) == u"no"_s; }));
}

}  // namespace
}  // namespace qinghe
