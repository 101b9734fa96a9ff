UPDATE MAIN SET Titolo = (
  SELECT Left(TAB.[Desc] & IIf(RIV.Numero Is Null, '', ' n. ' & CStr(Int(RIV.Numero))), 150)
  FROM RIV LEFT JOIN TAB ON RIV.TABTestataID = TAB.ID
  WHERE RIV.ID = MAIN.RacID)
WHERE TipoRac = 1;
