#include "account/registration/frmGetSHEN.h"

#include "shell/AppState.h"

namespace qinghe {

using namespace Qt::StringLiterals;

frmGetSHEN::frmGetSHEN()
    : ReferencePicker({.form = u"frmGetSHEN"_s,
                       .caption = u"选择省份"_s,
                       .idBox = u"TextShen_id"_s,
                       .nameBox = u"TextShen"_s,
                       .table = u"SHEN"_s,
                       .fields = u"id,shen,"_s}),
      TextShen_id(idBox()),
      TextShen(nameBox()) {}

void frmGetSHEN::chosen(double id) {
  app().gShenId = id;
}

}  // namespace qinghe
