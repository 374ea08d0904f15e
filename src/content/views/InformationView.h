#pragma once

#include <QString>

#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/StatusBar.h"
#include "forms/Toolbar.h"

namespace qinghe {

class SplitPane;

/// What tells one information view from the other.
struct InformationSource {
  QString form;
  QString caption;
  QString services;       ///< table of the services
  QString serviceFields;  ///< in the order asked for; the id is the first, the name the second
  int serviceCells;       ///< how many these are
  QString condition;      ///< of the services; none is sent when it is empty
  QString columns;        ///< table of the columns of a service's data
};

/// The data services that the portal lists, on the left, and on the right the data of the one that
/// was clicked, under the columns that the portal names for it.
class InformationView : public Form {
  Q_OBJECT

 public:
  ListView* ListView1;
  ListView* ListView2;
  Toolbar* Toolbar1;
  StatusBar* StatusBar1;

 protected:
  explicit InformationView(const InformationSource& source);

  void onLoad() override;

  /// Puts the data of the clicked service into `ListView2`, whose columns stand. A `Failure` ends
  /// it without a word.
  virtual void showData(const ListItem& service) = 0;

 private:
  void layOut();
  void SetColumns();
  void fitFirstColumn();
  void FillServices();
  void FillColumns(const QString& serviceId);
  void showService(const ListItem& service);

  InformationSource source_;
  SplitPane* panes_;
};

}  // namespace qinghe
