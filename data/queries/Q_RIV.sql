SELECT MAIN.*,
  RIV.*,
  T_Testata.[Desc] AS Testata,
  T_Periodicita.[Desc] AS Periodicita,
  T_Genere.[Desc] AS Genere,
  T_Editore.[Desc] AS Editore,
  T_Nazione.[Desc] AS Nazione,
  T_Lingua.[Desc] AS Lingua,
  T_Libero1.[Desc] AS Libero1,
  T_Libero2.[Desc] AS Libero2,
  T_Proprieta.[Desc] AS Proprieta,
  T_Stato.[Desc] AS Stato,
  T_DoveAcq.[Desc] AS DoveAcq,
  T_Pos.[Desc] AS Pos
FROM ((((((((((((MAIN INNER JOIN RIV ON MAIN.RacID = RIV.ID)
  LEFT JOIN TAB AS T_Testata ON RIV.TABTestataID = T_Testata.ID)
  LEFT JOIN TAB AS T_Periodicita ON RIV.TABPeriodicitaID = T_Periodicita.ID)
  LEFT JOIN TAB AS T_Genere ON MAIN.TABGenereID = T_Genere.ID)
  LEFT JOIN TAB AS T_Editore ON MAIN.TabEditoreID = T_Editore.ID)
  LEFT JOIN TAB AS T_Nazione ON MAIN.TabNazioneID = T_Nazione.ID)
  LEFT JOIN TAB AS T_Lingua ON MAIN.TabLinguaID = T_Lingua.ID)
  LEFT JOIN TAB AS T_Libero1 ON MAIN.TabLibero1ID = T_Libero1.ID)
  LEFT JOIN TAB AS T_Libero2 ON MAIN.TabLibero2ID = T_Libero2.ID)
  LEFT JOIN TAB AS T_Proprieta ON MAIN.TabProprietaID = T_Proprieta.ID)
  LEFT JOIN TAB AS T_Stato ON MAIN.TabStatoID = T_Stato.ID)
  LEFT JOIN TAB AS T_DoveAcq ON MAIN.TabDoveAcqID = T_DoveAcq.ID)
  LEFT JOIN TAB AS T_Pos ON MAIN.TabPosID = T_Pos.ID
WHERE MAIN.TipoRac = 1
ORDER BY RIV.ID;
