SELECT AUDSUB.*,
  T_Autore.[Desc] AS Autore,
  T_Genere.[Desc] AS Genere,
  T_AutoreTesto.[Desc] AS AutoreTesto
FROM (((AUDSUB)
  LEFT JOIN TAB AS T_Autore ON AUDSUB.TABAutoreID = T_Autore.ID)
  LEFT JOIN TAB AS T_Genere ON AUDSUB.TABGenereID = T_Genere.ID)
  LEFT JOIN TAB AS T_AutoreTesto ON AUDSUB.TABAutoreTestoID = T_AutoreTesto.ID
ORDER BY AUDSUB.ID;
