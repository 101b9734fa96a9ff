SELECT P.[Desc] AS Proprietario, S.[Desc] AS Condizioni, A.[Desc] AS LuogoAcquisto,
  O.[Desc] AS Posizione, MAIN.TipoRac AS TipoRac, 'Libri' AS DescRac,
  MAIN.Valore AS valore, MAIN.Cod AS cod, MAIN.Titolo AS titolo
FROM ((((MAIN INNER JOIN LIB ON MAIN.RacID = LIB.ID)
  LEFT JOIN TAB AS P ON MAIN.TabProprietaID = P.ID)
  LEFT JOIN TAB AS S ON MAIN.TabStatoID = S.ID)
  LEFT JOIN TAB AS A ON MAIN.TabDoveAcqID = A.ID)
  LEFT JOIN TAB AS O ON MAIN.TabPosID = O.ID
WHERE MAIN.TipoRac = 0
UNION ALL
SELECT P.[Desc] AS Proprietario, S.[Desc] AS Condizioni, A.[Desc] AS LuogoAcquisto,
  O.[Desc] AS Posizione, MAIN.TipoRac AS TipoRac, 'Riviste' AS DescRac,
  MAIN.Valore AS valore, MAIN.Cod AS cod, MAIN.Titolo AS titolo
FROM ((((MAIN INNER JOIN RIV ON MAIN.RacID = RIV.ID)
  LEFT JOIN TAB AS P ON MAIN.TabProprietaID = P.ID)
  LEFT JOIN TAB AS S ON MAIN.TabStatoID = S.ID)
  LEFT JOIN TAB AS A ON MAIN.TabDoveAcqID = A.ID)
  LEFT JOIN TAB AS O ON MAIN.TabPosID = O.ID
WHERE MAIN.TipoRac = 1
UNION ALL
SELECT P.[Desc] AS Proprietario, S.[Desc] AS Condizioni, A.[Desc] AS LuogoAcquisto,
  O.[Desc] AS Posizione, MAIN.TipoRac AS TipoRac, 'Audio' AS DescRac,
  MAIN.Valore AS valore, MAIN.Cod AS cod, MAIN.Titolo AS titolo
FROM ((((MAIN INNER JOIN AUD ON MAIN.RacID = AUD.ID)
  LEFT JOIN TAB AS P ON MAIN.TabProprietaID = P.ID)
  LEFT JOIN TAB AS S ON MAIN.TabStatoID = S.ID)
  LEFT JOIN TAB AS A ON MAIN.TabDoveAcqID = A.ID)
  LEFT JOIN TAB AS O ON MAIN.TabPosID = O.ID
WHERE MAIN.TipoRac = 2
UNION ALL
SELECT P.[Desc] AS Proprietario, S.[Desc] AS Condizioni, A.[Desc] AS LuogoAcquisto,
  O.[Desc] AS Posizione, MAIN.TipoRac AS TipoRac, 'Video' AS DescRac,
  MAIN.Valore AS valore, MAIN.Cod AS cod, MAIN.Titolo AS titolo
FROM ((((MAIN INNER JOIN VID ON MAIN.RacID = VID.ID)
  LEFT JOIN TAB AS P ON MAIN.TabProprietaID = P.ID)
  LEFT JOIN TAB AS S ON MAIN.TabStatoID = S.ID)
  LEFT JOIN TAB AS A ON MAIN.TabDoveAcqID = A.ID)
  LEFT JOIN TAB AS O ON MAIN.TabPosID = O.ID
WHERE MAIN.TipoRac = 3
UNION ALL
SELECT P.[Desc] AS Proprietario, S.[Desc] AS Condizioni, A.[Desc] AS LuogoAcquisto,
  O.[Desc] AS Posizione, MAIN.TipoRac AS TipoRac, 'Software' AS DescRac,
  MAIN.Valore AS valore, MAIN.Cod AS cod, MAIN.Titolo AS titolo
FROM ((((MAIN INNER JOIN COM ON MAIN.RacID = COM.ID)
  LEFT JOIN TAB AS P ON MAIN.TabProprietaID = P.ID)
  LEFT JOIN TAB AS S ON MAIN.TabStatoID = S.ID)
  LEFT JOIN TAB AS A ON MAIN.TabDoveAcqID = A.ID)
  LEFT JOIN TAB AS O ON MAIN.TabPosID = O.ID
WHERE MAIN.TipoRac = 4
UNION ALL
SELECT P.[Desc] AS Proprietario, S.[Desc] AS Condizioni, A.[Desc] AS LuogoAcquisto,
  O.[Desc] AS Posizione, MAIN.TipoRac AS TipoRac, 'Medicinali' AS DescRac,
  MAIN.Valore AS valore, MAIN.Cod AS cod, MAIN.Titolo AS titolo
FROM ((((MAIN INNER JOIN MED ON MAIN.RacID = MED.ID)
  LEFT JOIN TAB AS P ON MAIN.TabProprietaID = P.ID)
  LEFT JOIN TAB AS S ON MAIN.TabStatoID = S.ID)
  LEFT JOIN TAB AS A ON MAIN.TabDoveAcqID = A.ID)
  LEFT JOIN TAB AS O ON MAIN.TabPosID = O.ID
WHERE MAIN.TipoRac = 5
UNION ALL
SELECT P.[Desc] AS Proprietario, S.[Desc] AS Condizioni, A.[Desc] AS LuogoAcquisto,
  O.[Desc] AS Posizione, MAIN.TipoRac AS TipoRac, 'Oggetti' AS DescRac,
  MAIN.Valore AS valore, MAIN.Cod AS cod, MAIN.Titolo AS titolo
FROM ((((MAIN INNER JOIN OGG ON MAIN.RacID = OGG.ID)
  LEFT JOIN TAB AS P ON MAIN.TabProprietaID = P.ID)
  LEFT JOIN TAB AS S ON MAIN.TabStatoID = S.ID)
  LEFT JOIN TAB AS A ON MAIN.TabDoveAcqID = A.ID)
  LEFT JOIN TAB AS O ON MAIN.TabPosID = O.ID
WHERE MAIN.TipoRac = 6;
