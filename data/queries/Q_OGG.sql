SELECT MAIN.*,
  OGG.*,
  T_Utilizzo.[Desc] AS Utilizzo,
  T_Genere.[Desc] AS Genere,
  T_Editore.[Desc] AS Editore,
  T_Categoria.[Desc] AS Categoria,
  T_TipoDim.[Desc] AS TipoDim,
  T_Nazione.[Desc] AS Nazione,
  T_Libero1.[Desc] AS Libero1,
  T_Libero2.[Desc] AS Libero2,
  T_Proprieta.[Desc] AS Proprieta,
  T_Stato.[Desc] AS Stato,
  T_DoveAcq.[Desc] AS DoveAcq,
  T_Pos.[Desc] AS Pos
FROM ((((((((((((MAIN INNER JOIN OGG ON MAIN.RacID = OGG.ID)
  LEFT JOIN TAB AS T_Utilizzo ON OGG.TABUtilizzoID = T_Utilizzo.ID)
  LEFT JOIN TAB AS T_Genere ON MAIN.TABGenereID = T_Genere.ID)
  LEFT JOIN TAB AS T_Editore ON MAIN.TabEditoreID = T_Editore.ID)
  LEFT JOIN TAB AS T_Categoria ON OGG.TABCategoriaID = T_Categoria.ID)
  LEFT JOIN TAB AS T_TipoDim ON MAIN.TabTipoDimID = T_TipoDim.ID)
  LEFT JOIN TAB AS T_Nazione ON MAIN.TabNazioneID = T_Nazione.ID)
  LEFT JOIN TAB AS T_Libero1 ON MAIN.TabLibero1ID = T_Libero1.ID)
  LEFT JOIN TAB AS T_Libero2 ON MAIN.TabLibero2ID = T_Libero2.ID)
  LEFT JOIN TAB AS T_Proprieta ON MAIN.TabProprietaID = T_Proprieta.ID)
  LEFT JOIN TAB AS T_Stato ON MAIN.TabStatoID = T_Stato.ID)
  LEFT JOIN TAB AS T_DoveAcq ON MAIN.TabDoveAcqID = T_DoveAcq.ID)
  LEFT JOIN TAB AS T_Pos ON MAIN.TabPosID = T_Pos.ID
WHERE MAIN.TipoRac = 6
ORDER BY OGG.ID;
