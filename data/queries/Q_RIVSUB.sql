SELECT RIVSUB.*,
  T_Argomento.[Desc] AS Argomento,
  T_Autore.[Desc] AS Autore
FROM ((RIVSUB)
  LEFT JOIN TAB AS T_Argomento ON RIVSUB.TABArgomentoID = T_Argomento.ID)
  LEFT JOIN TAB AS T_Autore ON RIVSUB.TABAutoreID = T_Autore.ID
ORDER BY RIVSUB.ID;
