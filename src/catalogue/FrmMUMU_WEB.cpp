#include "catalogue/FrmMUMU_WEB.h"

#include "account/registration/frmGetAREA.h"
#include "account/registration/frmGetSHEN.h"
#include "catalogue/pickers/frmGetLEBI.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int provinceField = 6;
constexpr int areaField = 7;
constexpr int categoryField = 8;
constexpr int attributesField = 9;

QList<EditorField> brandFields() {
  return {
      {.index = 0, .label = u"行    业"_s, .industry = true, .labelName = u"Label7"_s},
      {.index = 1, .label = u"编    号"_s, .afterAdd = u"NO"_s, .labelName = u"Label3"_s},
      {.index = 2, .label = u"名    称"_s, .afterAdd = u"新添品牌"_s, .labelName = u"Label6"_s},
      {.index = 3,
       .label = u"价    格"_s,
       .afterAdd = u"0"_s,
       .numeric = true,
       .labelName = u"Label5"_s},
      {.index = 4, .label = u"价格说明"_s, .afterAdd = u"说明"_s, .labelName = u"Label1"_s},
      {.index = provinceField,
       .label = u"省    份"_s,
       .labelName = u"Label2"_s,
       .command = u"Command1"_s},
      {.index = areaField,
       .label = u"地    区"_s,
       .labelName = u"Label9"_s,
       .command = u"Command2"_s},
      {.index = categoryField,
       .label = u"类    别"_s,
       .labelName = u"Label4"_s,
       .command = u"Command4"_s},
      {.index = attributesField,
       .label = {},
       .accessibleName = u"其它属性"_s,
       .command = u"Command3"_s,
       .commandCaption = u"其它"_s},
      {.index = 5,
       .label = u"个 /  包"_s,
       .afterAdd = u"1"_s,
       .numeric = true,
       .labelName = u"Label8"_s},
      {.index = 10, .label = {}, .memo = true, .accessibleName = u"介绍"_s, .tab = IntroTab},
      {.index = 11, .label = {}, .memo = true, .accessibleName = u"留言"_s, .tab = NoteTab},
  };
}

EditorLook brandsLook() {
  return {
      .form = u"FrmMUMU_WEB"_s,
      .caption = u"品牌登记"_s,
      .listColumn = u"商品名称"_s,
      .listColumnInset = 44,
      .rowIcon = u"Ximu"_s,
      .newRowText = u"新添品牌"_s,
      .searchBox = false,
      .fields = brandFields(),
      .buttons = portalEditorButtons(),
  };
}

const PortalRecordKind& portalBrands() {
  using enum ValueFrom;
  static const PortalRecordKind kind{
      .listTable = u"MUMU"_s,
      .listFields = u"id,ximu,diji,noth,"_s,
      .detailFields =
          u"id,ximu_no,ximu,jigex,zhko,gesh,shen_id,shen,area_id,area,lebi_id,lebi,"
          "shxi,jish,liuy,"_s,
      .detailBeginsWithId = true,
      .detailCells = {{1},
                      {2},
                      {3},
                      {4},
                      {5},
                      {provinceField, true},
                      {provinceField},
                      {areaField, true},
                      {areaField},
                      {categoryField, true},
                      {categoryField},
                      {attributesField},
                      {10},
                      {11}},
      .saveTable = u"mumu"_s,
      .columnCount = u"18"_s,
      .saved = {{u"QIYE_ID"_s, OwnerId},
                {u"QIYE"_s, OwnerName},
                {u"SHEN_ID"_s, TagNumber, provinceField},
                {u"AREA_ID"_s, TagNumber, areaField},
                {u"LEBI_ID"_s, TagNumber, categoryField},
                {u"XIMU_NO"_s, Typed, 1},
                {u"XIMU"_s, Typed, 2},
                {u"GESH"_s, Typed, 5},
                {u"SHEN"_s, Typed, provinceField},
                {u"AREA"_s, Typed, areaField},
                {u"LEBI"_s, Typed, categoryField},
                {u"SHXI"_s, Typed, attributesField},
                {u"JIGEX"_s, Typed, 3},
                {u"ZHKO"_s, Typed, 4},
                {u"NOTH"_s, Checked}},
      .nameField = 2,
      .introField = 10,
      .noteField = 11,
  };
  return kind;
}

}  // namespace

FrmMUMU_WEB::FrmMUMU_WEB()
    : PagedRecordEditor(brandsLook(), portalBrands(), {.table = u"mumu"_s, .attributeKind = 2},
                        nullptr) {}

template <class Picker>
void FrmMUMU_WEB::pickInto(int field) {
  const Choice choice = defaultInstance<Picker>().choose();
  if (!choice.id.isEmpty() && !choice.name.isEmpty()) take(field, choice);
}

void FrmMUMU_WEB::pick(const QString& name) {
  // The area is picked apart from the province: nothing ties them on this screen.
  if (name == u"Command1") {
    pickInto<frmGetSHEN>(provinceField);
  } else if (name == u"Command2") {
    pickInto<frmGetAREA>(areaField);
  } else if (name == u"Command4") {
    pickInto<frmGetLEBI>(categoryField);
  } else if (name == u"Command3") {
    pickAttributes(attributesField);
  }
}

}  // namespace qinghe
