-- DATA.MDB: one company's own goods, services, orders and message history.
--
-- Dates are text, YYYY-MM-DD HH:MM:SS; booleans are 0 and 1. The declared type of a column also
-- tells the program how to read and write it: INTEGER, DOUBLE, BOOLEAN, DATETIME, else text.
-- `id` is this file's own key, `R_ID` the key of the row's twin on the portal, 0 while there is none.

PRAGMA journal_mode = DELETE;
PRAGMA user_version = 1;

BEGIN;

-- Companies that log in on this machine. Number and password compare exactly, all other text
-- without case.
CREATE TABLE QYXX (
  id        INTEGER PRIMARY KEY,
  R_ID      INTEGER DEFAULT 0,
  user_no   VARCHAR(50),
  user_name VARCHAR(50)  COLLATE NOCASE,
  user_pass VARCHAR(50),
  qiye      VARCHAR(100) COLLATE NOCASE,
  dizh      VARCHAR(200) COLLATE NOCASE,
  yobi      VARCHAR(20)  COLLATE NOCASE,
  dihu      VARCHAR(50)  COLLATE NOCASE,
  guji_id   INTEGER,
  guji      VARCHAR(50)  COLLATE NOCASE,
  shen_id   INTEGER,
  shen      VARCHAR(50)  COLLATE NOCASE,
  area_id   INTEGER,
  area      VARCHAR(50)  COLLATE NOCASE,
  haye_id   INTEGER,
  haye      VARCHAR(50)  COLLATE NOCASE,
  chzh      VARCHAR(50)  COLLATE NOCASE,
  fuzh      VARCHAR(50)  COLLATE NOCASE,
  lixi      VARCHAR(50)  COLLATE NOCASE,
  shji      VARCHAR(50)  COLLATE NOCASE,
  huji      VARCHAR(50)  COLLATE NOCASE,
  zhye      VARCHAR(200) COLLATE NOCASE,
  email     VARCHAR(100) COLLATE NOCASE,
  khyh      VARCHAR(100) COLLATE NOCASE,
  yhzh      VARCHAR(50)  COLLATE NOCASE,
  shha      VARCHAR(50)  COLLATE NOCASE,
  jish      TEXT         COLLATE NOCASE,
  yhly      TEXT         COLLATE NOCASE
);
CREATE INDEX QYXX_R_ID ON QYXX (R_ID);

-- Goods. Price, pack and note are kept as typed ("25.50", "010"), hence text.
CREATE TABLE XIMU (
  id       INTEGER PRIMARY KEY,
  R_ID     INTEGER DEFAULT 0,
  QIYE_ID  INTEGER,
  qiye     VARCHAR(100) COLLATE NOCASE,
  LEBI_ID  DOUBLE,
  CHYE_ID  DOUBLE,
  XIMU_NO  VARCHAR(50)  COLLATE NOCASE,
  XIMU     VARCHAR(200) COLLATE NOCASE,
  GESH     VARCHAR(50)  COLLATE NOCASE,
  LEBI     VARCHAR(100) COLLATE NOCASE,
  CHYE     VARCHAR(100) COLLATE NOCASE,
  SHXI     TEXT         COLLATE NOCASE,
  JIGEX    VARCHAR(50)  COLLATE NOCASE,
  ZHKO     VARCHAR(100) COLLATE NOCASE,
  JISH     TEXT         COLLATE NOCASE,
  NOTH     BOOLEAN DEFAULT 0
);
CREATE INDEX XIMU_R_ID ON XIMU (R_ID);
CREATE INDEX XIMU_QIYE_ID ON XIMU (QIYE_ID);

-- Services.
CREATE TABLE FUWU (
  id       INTEGER PRIMARY KEY,
  R_ID     INTEGER DEFAULT 0,
  QIYE_ID  INTEGER,
  qiye     VARCHAR(100) COLLATE NOCASE,
  XIMU_NO  VARCHAR(50)  COLLATE NOCASE,
  XIMU     VARCHAR(200) COLLATE NOCASE,
  GESH     VARCHAR(50)  COLLATE NOCASE,
  JIGEX    VARCHAR(50)  COLLATE NOCASE,
  ZHKO     VARCHAR(100) COLLATE NOCASE,
  JISH     TEXT         COLLATE NOCASE,
  SHXI     TEXT         COLLATE NOCASE,
  NOTH     BOOLEAN DEFAULT 0
);
CREATE INDEX FUWU_R_ID ON FUWU (R_ID);
CREATE INDEX FUWU_QIYE_ID ON FUWU (QIYE_ID);

-- Order headers. Other charges are kept as typed; the totals are numbers.
CREATE TABLE GOHU (
  id       INTEGER PRIMARY KEY,
  R_ID     INTEGER DEFAULT 0,
  gohu_no  VARCHAR(50)  COLLATE NOCASE,
  ghrq     DATETIME,
  gosh_id  INTEGER,
  gosh     VARCHAR(100) COLLATE NOCASE,
  kehu_id  INTEGER,
  kehu     VARCHAR(100) COLLATE NOCASE,
  feyo     VARCHAR(50)  COLLATE NOCASE,
  fhrq     DATETIME,
  jhhs     BOOLEAN DEFAULT 0,
  xshs     BOOLEAN DEFAULT 0,
  sh       BOOLEAN DEFAULT 0,
  fh       BOOLEAN DEFAULT 0,
  fhfs     VARCHAR(50)  COLLATE NOCASE,
  SHLI     DOUBLE,
  JINE     DOUBLE,
  ZHKO     DOUBLE,
  YNSH     DOUBLE,
  HEJI     DOUBLE,
  SHER     DOUBLE
);
CREATE INDEX GOHU_R_ID ON GOHU (R_ID);
CREATE INDEX GOHU_GHRQ ON GOHU (ghrq);
CREATE INDEX GOHU_GOSH_ID ON GOHU (gosh_id);
CREATE INDEX GOHU_KEHU_ID ON GOHU (kehu_id);

-- Order lines. `R_ID` is the portal's key of the order, `GOHU_ID` the header's key in this file.
-- A quantity below 0 is a return.
CREATE TABLE GOKU (
  id       INTEGER PRIMARY KEY,
  R_ID     INTEGER DEFAULT 0,
  GOHU_ID  INTEGER,
  XIMU_ID  INTEGER,
  XIMU     VARCHAR(200) COLLATE NOCASE,
  XIMU_BH  VARCHAR(50)  COLLATE NOCASE,
  XIMU_NO  VARCHAR(50)  COLLATE NOCASE,
  LEBI     VARCHAR(100) COLLATE NOCASE,
  GESH     VARCHAR(50)  COLLATE NOCASE,
  DAWE     VARCHAR(100) COLLATE NOCASE,
  SHLI     DOUBLE,
  JIGE     DOUBLE,
  JINE     DOUBLE,
  ZHKO     DOUBLE,
  YNSH     DOUBLE,
  BAXI     DOUBLE,
  LING     DOUBLE
);
-- A save finds each line by its order and its goods.
CREATE INDEX GOKU_R_ID ON GOKU (R_ID, XIMU_ID);
CREATE INDEX GOKU_GOHU_ID ON GOKU (GOHU_ID);

-- Retail orders.
CREATE TABLE DIHU (
  id       INTEGER PRIMARY KEY,
  R_ID     INTEGER DEFAULT 0,
  dihu_no  VARCHAR(50)  COLLATE NOCASE,
  dhrq     DATETIME,
  qyxx_id  INTEGER,
  qyxx     VARCHAR(100) COLLATE NOCASE,
  yhxx_id  INTEGER,
  yhxx     VARCHAR(100) COLLATE NOCASE,
  feyo     VARCHAR(50)  COLLATE NOCASE,
  fhrq     DATETIME,
  hs       BOOLEAN DEFAULT 0,
  fh       BOOLEAN DEFAULT 0,
  fhfs     VARCHAR(50)  COLLATE NOCASE,
  ximus    TEXT         COLLATE NOCASE,
  shlis    TEXT         COLLATE NOCASE,
  SHLI     DOUBLE,
  JINE     DOUBLE,
  ZHKO     DOUBLE,
  YNSH     DOUBLE,
  HEJI     DOUBLE,
  SHER     DOUBLE
);
CREATE INDEX DIHU_R_ID ON DIHU (R_ID);

-- Messages, addressee first. A row without a time given is stamped with the moment it is kept.
CREATE TABLE XIXI (
  id       INTEGER PRIMARY KEY,
  qyxx_id  INTEGER,
  qyxx     VARCHAR(100) COLLATE NOCASE,
  user_id  INTEGER,
  UserName VARCHAR(100) COLLATE NOCASE,
  content  TEXT         COLLATE NOCASE,
  dtime    DATETIME DEFAULT (datetime('now', 'localtime'))
);
CREATE INDEX XIXI_QYXX_ID ON XIXI (qyxx_id);
CREATE INDEX XIXI_USER_ID ON XIXI (user_id);

-- Producers and individual users.
CREATE TABLE CYXX (
  id       INTEGER PRIMARY KEY,
  R_ID     INTEGER DEFAULT 0,
  QIYE_ID  INTEGER,
  chye     VARCHAR(100) COLLATE NOCASE,
  jish     TEXT         COLLATE NOCASE,
  NOTH     BOOLEAN DEFAULT 0
);
CREATE INDEX CYXX_R_ID ON CYXX (R_ID);

CREATE TABLE YHXX (
  id        INTEGER PRIMARY KEY,
  R_ID      INTEGER DEFAULT 0,
  user_no   VARCHAR(50),
  user_name VARCHAR(50)  COLLATE NOCASE,
  user_pass VARCHAR(50),
  yhxx      VARCHAR(100) COLLATE NOCASE,
  dizh      VARCHAR(200) COLLATE NOCASE,
  yobi      VARCHAR(20)  COLLATE NOCASE,
  dihu      VARCHAR(50)  COLLATE NOCASE,
  email     VARCHAR(100) COLLATE NOCASE
);
CREATE INDEX YHXX_R_ID ON YHXX (R_ID);

-- Pairs of supplier and customer of the orders.
CREATE VIEW vgskh AS
  SELECT DISTINCT gosh_id, gosh, kehu_id, kehu FROM GOHU;

-- Categories and goods ordered, for each pair of parties.
CREATE VIEW vLEBI AS
  SELECT DISTINCT GOKU.LEBI AS lebi, GOHU.gosh_id AS GOSH_ID, GOHU.kehu_id AS KEHU_ID
  FROM GOHU JOIN GOKU ON GOKU.GOHU_ID = GOHU.id;

CREATE VIEW vXIMU AS
  SELECT DISTINCT GOKU.XIMU AS ximu, GOKU.LEBI AS lebi, GOHU.kehu_id AS kehu_id,
                  GOHU.gosh_id AS gosh_id
  FROM GOHU JOIN GOKU ON GOKU.GOHU_ID = GOHU.id;

COMMIT;
