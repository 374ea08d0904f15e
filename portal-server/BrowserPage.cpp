#include "BrowserPage.h"

#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

constexpr std::string_view style = R"(
:root{color-scheme:light}
*{box-sizing:border-box}
body{font-family:"Noto Sans CJK SC","Microsoft YaHei",sans-serif;max-width:60rem;margin:0 auto;
padding:1rem 1.25rem 2.5rem;line-height:1.65;color:#222;background:#fff;overflow-wrap:anywhere}
h1{font-size:1.6rem;margin:.2rem 0 .6rem;padding-bottom:.35rem;border-bottom:3px solid #2e7d5b}
h2{font-size:1.2rem;margin:1.8rem 0 .6rem;color:#2e7d5b}
a{color:#1f6a4b}
p{margin:.4rem 0}
table{border-collapse:collapse}
td,th{border:1px solid #d5ddd9;padding:.3rem .7rem;text-align:left;vertical-align:top}
th{background:#f1f6f3;font-weight:600;white-space:nowrap}
img{max-width:100%;height:auto;vertical-align:middle}
.none{border:1px dashed #9aa;padding:2.5rem 1rem;text-align:center;color:#667}
.note{border-left:4px solid #b3442e;background:#fbefec;padding:.5rem .8rem}
.quiet{color:#667;font-size:.9rem}
.banner{display:flex;gap:1.25rem;align-items:center;background:#eef5f1;border-radius:8px;
padding:1.1rem 1.25rem}
.banner h1{border:0;margin:0;padding:0}
.banner img{width:7rem;height:7rem;object-fit:cover;border-radius:8px;background:#fff}
.columns{display:grid;grid-template-columns:minmax(0,1fr) 19rem;gap:1.5rem;align-items:start}
.cards{display:grid;grid-template-columns:repeat(auto-fill,minmax(11.5rem,1fr));gap:.8rem}
.card{border:1px solid #d5ddd9;border-radius:8px;overflow:hidden;display:flex;
flex-direction:column;background:#fff}
.card .face{height:11rem;background:#f1f6f3;display:flex;align-items:center;
justify-content:center;color:#a9bdb3;font-size:2.2rem}
.card .face a{width:100%;height:100%}
.card .face img{width:100%;height:100%;object-fit:contain}
.card .words{padding:.5rem .7rem .7rem}
.card h3{font-size:1rem;margin:0;line-height:1.35}
.price{color:#b3442e;font-weight:600}
.help{display:grid;grid-template-columns:15rem minmax(0,1fr);gap:2rem;align-items:start}
.help nav{background:#f1f6f3;border-radius:8px;padding:.7rem 1rem}
.help ul{list-style:none;margin:0;padding-left:1rem}
.help nav>ul{padding-left:0}
.here{font-weight:700}
.turn{display:flex;justify-content:space-between;margin-top:1.5rem;border-top:1px solid #d5ddd9;
padding-top:.6rem}
form{margin:.8rem 0;display:flex;gap:.6rem;flex-wrap:wrap;align-items:center}
button{font:inherit;padding:.25rem 1rem;border:1px solid #2e7d5b;border-radius:5px;
background:#2e7d5b;color:#fff}
button.plain{background:#fff;color:#2e7d5b}
input{font:inherit;max-width:100%}
.picture{text-align:center;margin:.6rem 0}
@media(max-width:42rem){.columns,.help{grid-template-columns:minmax(0,1fr)}}
)";

void appendClass(std::string& html, std::string_view kind) {
  if (!kind.empty()) html.append(" class=\"").append(kind).append("\"");
}

}  // namespace

BrowserPage::BrowserPage(std::string_view title) {
  html_ = "<!DOCTYPE html>\n<html lang=\"zh\"><head><meta charset=\"gb2312\">";
  html_ += "<meta name=\"viewport\" content=\"width=device-width\"><title>";
  html_.append(attributeText(title)).append("</title><style>").append(style);
  html_ += "</style></head><body>\n";
}

BrowserPage& BrowserPage::element(std::string_view tag, std::string_view text,
                                  std::string_view kind) {
  html_.append("<").append(tag);
  appendClass(html_, kind);
  html_.append(">").append(storedText(text)).append("</").append(tag).append(">\n");
  return *this;
}

BrowserPage& BrowserPage::link(std::string_view address, std::string_view text,
                               std::string_view kind) {
  html_.append("<a href=\"").append(attributeText(address)).append("\"");
  appendClass(html_, kind);
  html_.append(">").append(storedText(text)).append("</a>");
  return *this;
}

BrowserPage& BrowserPage::raw(std::string_view html) {
  html_ += html;
  return *this;
}

PortalAnswer BrowserPage::finish(unsigned status) && {
  html_ += "</body></html>\n";
  return {.status = status, .body = codePageFromUtf8(html_), .forBrowser = true};
}

}  // namespace qinghe::portal_server
