SELECT MAIN.*,
  LIB.*,
  T_Autore.[Desc] AS Autore,
  T_Genere.[Desc] AS Genere,
  T_Editore.[Desc] AS Editore,
  T_Lingua.[Desc] AS Lingua,
  T_Nazione.[Desc] AS Nazione,
  T_TipoDim.[Desc] AS TipoDim,
  T_Collana.[Desc] AS Collana,
  T_Libero1.[Desc] AS Libero1,
  T_Libero2.[Desc] AS Libero2,
  T_Proprieta.[Desc] AS Proprieta,
  T_Stato.[Desc] AS Stato,
  T_DoveAcq.[Desc] AS DoveAcq,
  T_Pos.[Desc] AS Pos
FROM (((((((((((((MAIN INNER JOIN LIB ON MAIN.RacID = LIB.ID)
  LEFT JOIN TAB AS T_Autore ON MAIN.TABAutoreID = T_Autore.ID)
  LEFT JOIN TAB AS T_Genere ON MAIN.TABGenereID = T_Genere.ID)
  LEFT JOIN TAB AS T_Editore ON MAIN.TabEditoreID = T_Editore.ID)
  LEFT JOIN TAB AS T_Lingua ON MAIN.TabLinguaID = T_Lingua.ID)
  LEFT JOIN TAB AS T_Nazione ON MAIN.TabNazioneID = T_Nazione.ID)
  LEFT JOIN TAB AS T_TipoDim ON MAIN.TabTipoDimID = T_TipoDim.ID)
  LEFT JOIN TAB AS T_Collana ON LIB.TabCollanaID = T_Collana.ID)
  LEFT JOIN TAB AS T_Libero1 ON MAIN.TabLibero1ID = T_Libero1.ID)
  LEFT JOIN TAB AS T_Libero2 ON MAIN.TabLibero2ID = T_Libero2.ID)
  LEFT JOIN TAB AS T_Proprieta ON MAIN.TabProprietaID = T_Proprieta.ID)
  LEFT JOIN TAB AS T_Stato ON MAIN.TabStatoID = T_Stato.ID)
  LEFT JOIN TAB AS T_DoveAcq ON MAIN.TabDoveAcqID = T_DoveAcq.ID)
  LEFT JOIN TAB AS T_Pos ON MAIN.TabPosID = T_Pos.ID
WHERE MAIN.TipoRac = 0
ORDER BY LIB.ID;
