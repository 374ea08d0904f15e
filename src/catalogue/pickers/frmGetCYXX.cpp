#include "catalogue/pickers/frmGetCYXX.h"

#include "portal/RequestBuilder.h"
#include "shell/AppState.h"

namespace qinghe {

using namespace Qt::StringLiterals;

frmGetCYXX::frmGetCYXX()
    : PagedPicker({.form = u"frmGetCYXX"_s,
                   .caption = u"选择生产商"_s,
                   .idBox = u"TextCyxx_id"_s,
                   .nameBox = u"TextCyxx"_s,
                   .countPath = paths::loginPageCount,
                   .pagePath = paths::loginPage,
                   .table = u"CYXX"_s,
                   .fields = u"id,qiye,"_s,
                   .condition = [] { return u"HAYE_ID=%1"_s.arg(app().gHayeId); }}),
      TextCyxx_id(idBox()),
      TextCyxx(nameBox()) {}

}  // namespace qinghe
