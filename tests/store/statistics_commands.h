#pragma once

#include <QString>

/// The commands of the two statistics wizards, with %own%, %rangeClause%, %lebiClause% and
/// %ximuClause% where the wizard puts its own number and its filters.
namespace qinghe::statistics {

using namespace Qt::StringLiterals;

inline const QString purchaseByCategory =
    u"SHAPE {SELECT DISTINCT GOKU.LEBI From GOHU, GOKU Where GOHU.id = GOKU.GOHU_ID AND  "
    u"GOHU.kehu_id=%own%%lebiClause% ORDER BY GOKU.LEBI}  AS Cmd_goku_lebi APPEND (( SHAPE "
    u"{SELECT DISTINCT GOHU.GOSH_ID, GOKU.LEBI,GOKU.XIMU_ID, GOKU.XIMU FROM GOHU, GOKU WHERE "
    u"GOHU.ID=GOKU.GOHU_ID AND GOHU.kehu_id=%own%%rangeClause% ORDER BY "
    u"GOHU.GOSH_ID,GOKU.XIMU_ID}  AS Cmd_goku_lebi_ximu APPEND ({SELECT "
    u"goku.XIMU_ID,gohu.ghrq,goku.DAWE,goku.SHLI,goku.JIGE,goku.JINE,goku.YNSH,iif(goku.SHLI<0,"
    u"goku.SHLI,0) "
    u"as thsl,iif(goku.SHLI<0,goku.JINE,0) as thje,iif(goku.SHLI<0,goku.YNSH,0) as thys  FROM "
    u"gohu,goku WHERE gohu.ID=goku.gohu_ID and gohu.kehu_id=%own%%rangeClause% }  AS "
    u"Cmd_goku_lebi_ximu_goku RELATE 'ximu_id' TO 'XIMU_ID') AS Cmd_goku_lebi_ximu_goku) AS "
    u"Cmd_goku_lebi_ximu RELATE 'lebi' TO 'lebi') AS Cmd_goku_lebi_ximu"_s;

inline const QString purchaseByPartner =
    u"SHAPE {SELECT DISTINCT GOSH_ID, GOSH AS DAWE From GOHU Where kehu_id "
    u"=%own%%rangeClause% ORDER BY GOSH_ID}  AS Cmdgoku_gosh APPEND (( SHAPE {SELECT DISTINCT "
    u"GOHU.GOSH_ID, GOKU.XIMU_ID, GOKU.XIMU FROM GOHU, GOKU WHERE GOHU.ID=GOKU.GOHU_ID AND "
    u"GOHU.kehu_id=%own%%rangeClause% ORDER BY GOHU.GOSH_ID,GOKU.XIMU_ID}  AS "
    u"Cmdgoku_gosh_ximu APPEND ({SELECT gohu.gosh_id,goku.ximu_id,gohu.ghrq, goku.DAWE, "
    u"goku.SHLI, goku.JIGE, goku.JINE,goku.YNSH ,iif(goku.SHLI<0,goku.SHLI,0) as "
    u"thsl,iif(goku.SHLI<0,goku.JINE,0) as thje,iif(goku.SHLI<0,goku.YNSH,0) as thys  FROM "
    u"gohu,goku WHERE gohu.ID =goku.gohu_ID and gohu.kehu_id=%own%%rangeClause% }  AS "
    u"Cmdgoku_gosh_ximu_goku RELATE 'gosh_id' TO 'gosh_id','ximu_id' TO 'ximu_id') AS "
    u"Cmdgoku_gosh_ximu_goku) AS Cmdgoku_gosh_ximu RELATE 'gosh_id' TO 'gosh_id') AS "
    u"Cmdgoku_gosh_ximu"_s;

inline const QString purchaseByMonth =
    u"SHAPE {select distinct year(gohu.ghrq)&'年'&month(gohu.ghrq)&'月' as  month_id from "
    u"gohu where kehu_id=%own%%rangeClause% }  AS Cmdgoku_month APPEND (( SHAPE {SELECT "
    u"distinct year(gohu.ghrq)&'年'&month(gohu.ghrq)&'月' as "
    u"month_id,goku.ximu_id,goku.ximu FROM gohu, goku WHERE gohu.ID = goku.gohu_ID AND "
    u"gohu.kehu_id=%own%%rangeClause% }  AS Cmdgoku_month_ximu APPEND ({SELECT "
    u"year(gohu.ghrq)&'年'&month(gohu.ghrq)&'月' as month_id,goku.ximu_id,gohu.ghrq, "
    u"goku.DAWE, goku.SHLI, goku.JIGE, goku.JINE,goku.YNSH ,iif(goku.SHLI<0,goku.SHLI,0) as "
    u"thsl,iif(goku.SHLI<0,goku.JINE,0) as thje,iif(goku.SHLI<0,goku.YNSH,0) as thys  FROM "
    u"gohu,goku WHERE gohu.ID =goku.gohu_ID%rangeClause% }  AS Cmdgoku_month_ximu_goku RELATE "
    u"'month_id' TO 'month_id','ximu_id' TO 'ximu_id') AS Cmdgoku_month_ximu_goku) AS "
    u"Cmdgoku_month_ximu RELATE 'month_id' TO 'month_id') AS Cmdgoku_month_ximu"_s;

inline const QString purchaseDetails =
    u"SHAPE {SELECT DISTINCT GOHU.GOSH_ID, GOKU.XIMU_ID, GOKU.XIMU FROM GOHU, GOKU WHERE "
    u"GOHU.ID=GOKU.GOHU_ID AND GOHU.kehu_id=%own%%ximuClause%%rangeClause% ORDER BY "
    u"GOHU.GOSH_ID,GOKU.XIMU_ID}  AS Cmd_Ximu_R APPEND ({select "
    u"goku.ximu_id,goku.ximu,gohu.gohu_no,gohu.ghrq,gohu.gosh as "
    u"dawe,goku.shli,goku.jige,goku.jine,goku.ynsh,goku.baxi,goku.ling from gohu,goku where "
    u"gohu.id=goku.gohu_id and gohu.kehu_id=%own%%rangeClause%%ximuClause%}  AS Cmd_ximu_goku "
    u"RELATE 'XIMU_ID' TO 'ximu_id') AS Cmd_ximu_goku"_s;

inline const QString salesByCategory =
    u"SHAPE {SELECT DISTINCT GOKU.LEBI From GOHU, GOKU Where GOHU.id = GOKU.GOHU_ID AND  "
    u"gosh_id=%own%%lebiClause% ORDER BY GOKU.LEBI}  AS Cmd_goku_lebi APPEND (( SHAPE {SELECT "
    u"DISTINCT GOHU.KEHU_ID, GOKU.LEBI,GOKU.XIMU_ID, GOKU.XIMU FROM GOHU, GOKU WHERE "
    u"GOHU.ID=GOKU.GOHU_ID AND GOHU.gosh_id=%own%%rangeClause% ORDER BY "
    u"GOHU.KEHU_ID,GOKU.XIMU_ID}  AS Cmd_goku_lebi_ximu APPEND ({SELECT "
    u"goku.XIMU_ID,gohu.ghrq,goku.DAWE,goku.SHLI,goku.JIGE,goku.JINE,goku.YNSH,iif(goku.SHLI<0,"
    u"goku.SHLI,0) "
    u"as thsl,iif(goku.SHLI<0,goku.JINE,0) as thje,iif(goku.SHLI<0,goku.YNSH,0) as thys  FROM "
    u"gohu,goku WHERE gohu.ID=goku.gohu_ID and gohu.gosh_id=%own%%rangeClause% }  AS "
    u"Cmd_goku_lebi_ximu_goku RELATE 'ximu_id' TO 'XIMU_ID') AS Cmd_goku_lebi_ximu_goku) AS "
    u"Cmd_goku_lebi_ximu RELATE 'lebi' TO 'lebi') AS Cmd_goku_lebi_ximu"_s;

inline const QString salesByPartner =
    u"SHAPE {SELECT DISTINCT GOHU.KEHU_ID, GOHU.KEHU AS DAWE From GOHU where "
    u"GOHU.gosh_id=%own%%rangeClause% ORDER BY GOHU.KEHU_ID}  AS Cmdgoku_gosh APPEND (( SHAPE "
    u"{SELECT DISTINCT GOHU.KEHU_ID, GOKU.XIMU_ID, GOKU.XIMU FROM GOHU, GOKU WHERE "
    u"GOHU.ID=GOKU.GOHU_ID AND GOHU.gosh_id=%own%%rangeClause% ORDER BY "
    u"GOHU.KEHU_ID,GOKU.XIMU_ID}  AS Cmdgoku_gosh_ximu APPEND ({SELECT "
    u"gohu.kehu_id,goku.ximu_id,gohu.ghrq, goku.DAWE, goku.SHLI, goku.JIGE, "
    u"goku.JINE,goku.YNSH ,iif(goku.SHLI<0,goku.SHLI,0) as thsl,iif(goku.SHLI<0,goku.JINE,0) "
    u"as thje,iif(goku.SHLI<0,goku.YNSH,0) as thys  FROM gohu,goku WHERE gohu.ID "
    u"=goku.gohu_ID and gohu.gosh_id=%own%%rangeClause% }  AS Cmdgoku_gosh_ximu_goku RELATE "
    u"'kehu_id' TO 'kehu_id','ximu_id' TO 'ximu_id') AS Cmdgoku_gosh_ximu_goku) AS "
    u"Cmdgoku_gosh_ximu RELATE 'kehu_id' TO 'kehu_id') AS Cmdgoku_gosh_ximu"_s;

inline const QString salesByMonth =
    u"SHAPE {select distinct year(gohu.ghrq)&'年'&month(gohu.ghrq)&'月' as  month_id from "
    u"gohu where gosh_id=%own%%rangeClause% }  AS Cmdgoku_month APPEND (( SHAPE {SELECT "
    u"distinct year(gohu.ghrq)&'年'&month(gohu.ghrq)&'月' as "
    u"month_id,goku.ximu_id,goku.ximu FROM gohu, goku WHERE gohu.ID = goku.gohu_ID AND "
    u"gohu.gosh_id=%own%%rangeClause% }  AS Cmdgoku_month_ximu APPEND ({SELECT "
    u"year(gohu.ghrq)&'年'&month(gohu.ghrq)&'月' as month_id,goku.ximu_id,gohu.ghrq, "
    u"goku.DAWE, goku.SHLI, goku.JIGE, goku.JINE,goku.YNSH ,iif(goku.SHLI<0,goku.SHLI,0) as "
    u"thsl,iif(goku.SHLI<0,goku.JINE,0) as thje,iif(goku.SHLI<0,goku.YNSH,0) as thys  FROM "
    u"gohu,goku WHERE gohu.ID =goku.gohu_ID%rangeClause% }  AS Cmdgoku_month_ximu_goku RELATE "
    u"'month_id' TO 'month_id','ximu_id' TO 'ximu_id') AS Cmdgoku_month_ximu_goku) AS "
    u"Cmdgoku_month_ximu RELATE 'month_id' TO 'month_id') AS Cmdgoku_month_ximu"_s;

inline const QString salesDetails =
    u"SHAPE {SELECT DISTINCT GOHU.KEHU_ID, GOKU.XIMU_ID, GOKU.XIMU FROM GOHU, GOKU WHERE "
    u"GOHU.ID=GOKU.GOHU_ID AND GOHU.gosh_id=%own%%rangeClause% ORDER BY "
    u"GOHU.KEHU_ID,GOKU.XIMU_ID}  AS Cmd_Ximu_R APPEND ({select "
    u"goku.ximu_id,goku.ximu,gohu.gohu_no,gohu.ghrq,gohu.kehu as "
    u"dawe,goku.shli,goku.jige,goku.jine,goku.ynsh,goku.baxi,goku.ling from gohu,goku where "
    u"gohu.id=goku.gohu_id and gohu.kehu_id=%own%%rangeClause%%ximuClause%}  AS Cmd_ximu_goku "
    u"RELATE 'XIMU_ID' TO 'ximu_id') AS Cmd_ximu_goku"_s;

/// The command with the wizard's number and filters in their places.
inline QString filled(QString command, const QString& range = {}, const QString& category = {},
                      const QString& goods = {}, int own = 25) {
  return command.replace(u"%own%"_s, QString::number(own))
      .replace(u"%rangeClause%"_s, range)
      .replace(u"%lebiClause%"_s, category)
      .replace(u"%ximuClause%"_s, goods);
}

}  // namespace qinghe::statistics
