#pragma once

#include <array>
#include <memory>
#include <vector>

#include "forms/ComboBox.h"
#include "forms/DatePicker.h"
#include "forms/Form.h"
#include "forms/TabControl.h"
#include "forms/TextBox.h"
#include "forms/TreeView.h"
#include "reports/engine/commands.h"
#include "store/GetData.h"

class QCheckBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace qinghe {

/// An option of a wizard. One without a report is offered and does nothing.
struct WizardOption {
  QString text;
  StatisticsReport report = StatisticsReport::None;
};

/// Where the two wizards differ.
struct WizardLook {
  QString form, caption, icon;
  TradeSide side = TradeSide::Purchase;
  QString partnerLabel, numberLabel, stockLabel;
  QString numberBox;  ///< the name of the box for the order's number
  std::vector<WizardOption> options;
  std::size_t groupings = 0;  ///< how many options stand on the page of groupings; the rest behind
};

/// Six pages of choices that become one shape command and open its report. All orders are read from
/// the local file. The wizard stays open behind the report, with all its choices.
class StatisticsWizard : public Form {
  Q_OBJECT

 public:
  explicit StatisticsWizard(WizardLook look);

  TabControl* SSTab1;
  QWidget* picNav;
  std::array<QPushButton*, 5> cmdNav{};  ///< 1 cancel, 2 back, 3 next, 4 finish; no 0
  std::vector<QLabel*> imgStep;          ///< one on each page
  TreeView* TreeView1;
  TreeView* TreeView2;
  DatePicker* DTPickerFrom;
  DatePicker* DTPickerTo;
  ComboBox* comboDawe;
  std::vector<QRadioButton*> Option1;
  // These four are read by nothing.
  ComboBox* ComboYewu;
  ComboBox* ComboKufa;
  TextBox* numberBox;
  QCheckBox* CheckDetail;

  qint16 mStep = 0;
  bool mCanFinish = false;
  QString mCommand;
  QString rangeClause, lebiClause, ximuClause;

  void SetStep(qint16 step);

 protected:
  void onLoad() override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void makeControls();
  void makeOptions();
  void layOut();
  void layOutLists();
  void layOutRange();
  void layOutOrders();
  void layOutOptions();
  QVBoxLayout* addPage(const QString& caption, const QString& image, const QString& frame,
                       const QString& frameCaption);
  void connectControls();
  void letTabReachOptions();

  void FillCategories();
  void FillGoods(const QString& category);
  void FillPartners();
  void chooseCategory(const TreeNode& node);
  void chooseGoods(const TreeNode& node);
  void Finish();
  void showChosenReport();
  GetData& localStore();

  WizardLook look_;
  std::unique_ptr<GetData> store_;
};

}  // namespace qinghe
