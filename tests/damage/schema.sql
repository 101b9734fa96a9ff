DROP INDEX MAIN_2
DROP INDEX LIB_1u
DROP INDEX TAB_2
DROP INDEX CFG_1u
DROP TABLE AUD
DROP TABLE TAB
DROP TABLE MAIN
DROP TABLE QUERYDEF
DROP TABLE CFG
ALTER TABLE MAIN DROP COLUMN Titolo
ALTER TABLE AUD DROP COLUMN Durata
ALTER TABLE TAB RENAME COLUMN Desc TO Testo
ALTER TABLE LIB ADD COLUMN X
UPDATE sqlite_schema SET sql = replace(sql, 'LONG', 'TEXT(3)')
UPDATE sqlite_schema SET sql = replace(sql, 'TEXT', 'DOUBLE')
UPDATE sqlite_schema SET sql = replace(sql, 'DATE', 'YESNO')
UPDATE sqlite_schema SET sql = replace(sql, 'INTEGER PRIMARY KEY AUTOINCREMENT', 'LONG')
UPDATE sqlite_schema SET sql = replace(sql, 'TipoRac SHORT,', '') WHERE name = 'MAIN'
UPDATE sqlite_schema SET sql = replace(sql, '(TipoRac, RacID)', '(RacID, TipoRac)')
UPDATE sqlite_schema SET sql = replace(sql, '(TipoRac, RacID)', '(TipoRac)')
UPDATE sqlite_schema SET sql = replace(sql, '(TipoRac, RacID)', '(TipoRac, Anno)')
UPDATE sqlite_schema SET sql = replace(sql, 'CREATE INDEX', 'CREATE UNIQUE INDEX')
UPDATE sqlite_schema SET sql = replace(sql, '(TipoTab, TipoRac, "Desc")', '(TipoTab, TipoRac)')
UPDATE sqlite_schema SET tbl_name = 'TAB', sql = replace(sql, 'MAIN (', 'TAB (') WHERE name = 'MAIN_2'
DELETE FROM sqlite_schema WHERE name = 'MAIN_2'
UPDATE sqlite_schema SET rootpage = $page WHERE name = 'MAIN_2'
UPDATE sqlite_schema SET rootpage = $page WHERE name = 'TAB'
UPDATE sqlite_schema SET rootpage = $page WHERE name = 'LIB_1u'
UPDATE sqlite_schema SET rootpage = $page WHERE name = 'QUERYDEF'
UPDATE sqlite_schema SET rootpage = (SELECT rootpage FROM sqlite_schema WHERE name = 'AUD_1u') WHERE name = 'LIB_1u'
UPDATE sqlite_schema SET rootpage = (SELECT rootpage FROM sqlite_schema WHERE name = 'AUD') WHERE name = 'VID'
UPDATE sqlite_schema SET rootpage = (SELECT rootpage FROM sqlite_schema WHERE name = 'TAB_3') WHERE name = 'TAB_2'
