#include "catalogue/pickers/frmGetMUMU.h"

#include "portal/RequestBuilder.h"

namespace qinghe {

using namespace Qt::StringLiterals;

frmGetMUMU::frmGetMUMU()
    : PagedPicker({.form = u"frmGetMUMU"_s,
                   .caption = u"选择品牌"_s,
                   .idBox = u"TextMumu_id"_s,
                   .nameBox = u"TextMumu"_s,
                   .countPath = paths::productPageCount,
                   .pagePath = paths::productPage,
                   .table = u"MUMU"_s,
                   .fields = u"id,ximu,"_s,
                   .condition = [] { return u"NOTH=TRUE"_s; }}),
      TextMumu_id(idBox()),
      TextMumu(nameBox()) {}

}  // namespace qinghe
