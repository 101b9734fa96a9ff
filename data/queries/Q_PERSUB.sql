SELECT PERSUB.*,
  T_Iniziativa.[Desc] AS Iniziativa,
  T_Modo.[Desc] AS Modo,
  T_Motivo.[Desc] AS Motivo
FROM (((PERSUB)
  LEFT JOIN TAB AS T_Iniziativa ON PERSUB.TABIniziativaID = T_Iniziativa.ID)
  LEFT JOIN TAB AS T_Modo ON PERSUB.TABModoID = T_Modo.ID)
  LEFT JOIN TAB AS T_Motivo ON PERSUB.TABMotivoID = T_Motivo.ID
ORDER BY PERSUB.ID;
