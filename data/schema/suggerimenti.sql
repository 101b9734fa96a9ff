-- The tips: those of a group belong to one window.

CREATE TABLE SIN (
  ID INTEGER PRIMARY KEY,
  grp TEXT(10) COLLATE ITALIANO,
  note TEXT(2000) COLLATE ITALIANO
);
