#include "account/registration/frmGetHAYE.h"

namespace qinghe {

using namespace Qt::StringLiterals;

frmGetHAYE::frmGetHAYE()
    : ReferencePicker({.form = u"frmGetHAYE"_s,
                       .caption = u"选择行业"_s,
                       .idBox = u"TextHaye_id"_s,
                       .nameBox = u"TextHaye"_s,
                       .table = u"HAYE"_s,
                       .fields = u"id,haye,"_s}),
      TextHaye_id(idBox()),
      TextHaye(nameBox()) {}

}  // namespace qinghe
