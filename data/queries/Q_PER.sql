SELECT MAIN.*,
  PER.*,
  T_TitoloPersona.[Desc] AS TitoloPersona,
  T_Nazione.[Desc] AS Nazione,
  T_Zona.[Desc] AS Zona,
  T_Lingua.[Desc] AS Lingua,
  T_Genere.[Desc] AS Genere,
  T_Stato.[Desc] AS Stato,
  T_TipoTel1.[Desc] AS TipoTel1,
  T_TipoTel2.[Desc] AS TipoTel2,
  T_TipoTel3.[Desc] AS TipoTel3,
  T_TipoTel4.[Desc] AS TipoTel4,
  T_TipoTel5.[Desc] AS TipoTel5,
  T_Libero1.[Desc] AS Libero1,
  T_Libero2.[Desc] AS Libero2
FROM (((((((((((((MAIN INNER JOIN PER ON MAIN.RacID = PER.ID)
  LEFT JOIN TAB AS T_TitoloPersona ON PER.TABTitoloID = T_TitoloPersona.ID)
  LEFT JOIN TAB AS T_Nazione ON MAIN.TabNazioneID = T_Nazione.ID)
  LEFT JOIN TAB AS T_Zona ON PER.TABZonaID = T_Zona.ID)
  LEFT JOIN TAB AS T_Lingua ON MAIN.TabLinguaID = T_Lingua.ID)
  LEFT JOIN TAB AS T_Genere ON MAIN.TABGenereID = T_Genere.ID)
  LEFT JOIN TAB AS T_Stato ON MAIN.TabStatoID = T_Stato.ID)
  LEFT JOIN TAB AS T_TipoTel1 ON PER.TABTel1ID = T_TipoTel1.ID)
  LEFT JOIN TAB AS T_TipoTel2 ON PER.TABTel2ID = T_TipoTel2.ID)
  LEFT JOIN TAB AS T_TipoTel3 ON PER.TABTel3ID = T_TipoTel3.ID)
  LEFT JOIN TAB AS T_TipoTel4 ON PER.TABTel4ID = T_TipoTel4.ID)
  LEFT JOIN TAB AS T_TipoTel5 ON PER.TABTel5ID = T_TipoTel5.ID)
  LEFT JOIN TAB AS T_Libero1 ON MAIN.TabLibero1ID = T_Libero1.ID)
  LEFT JOIN TAB AS T_Libero2 ON MAIN.TabLibero2ID = T_Libero2.ID
WHERE MAIN.TipoRac = 7
ORDER BY PER.ID;
