#pragma once

#include <QString>

#include "Tour.h"

namespace qinghe {

/// One sitting of one company at its client, from the log-in to the end of the program.
struct Act {
  QString name;
  QString desk;      ///< whose program folder it is
  QString password;  ///< of the user that logs in, who is the desk's; empty: nobody logs in
  /// What is done behind the log-in.
  QList<TourStep> (*steps)();
};

/// All acts in the order in which they are played; the later ones stand on what the earlier did.
const QList<Act>& acts();

QList<TourStep> registerSteps();
QList<TourStep> goodsSteps();
QList<TourStep> portalSteps();
QList<TourStep> brandSteps();
QList<TourStep> buySteps();
QList<TourStep> sellSteps();
QList<TourStep> confirmSteps();
QList<TourStep> shipSteps();
QList<TourStep> receiveSteps();
QList<TourStep> retailSteps();
QList<TourStep> statisticsSteps();
QList<TourStep> messagesSteps();
QList<TourStep> contentSteps();

}  // namespace qinghe
