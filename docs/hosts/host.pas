{ A host in Pascal: rates a shipment of the sample data, whose directory is its argument. With Free
  Pascal:
      fpc -FuPREFIX/share/hundredweight/languages -FlPREFIX/lib host.pas
      LD_LIBRARY_PATH=PREFIX/lib ./host DIRECTORY
  Its exit code is 1 when the shipment is refused, 2 when there is nothing to rate it by. }
program host;
{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

uses
  {$IFDEF MSWINDOWS}Windows,{$ENDIF} SysUtils, hundredweight;

{$IFNDEF MSWINDOWS}{$LINKLIB c}{$ENDIF}

var
  context: PRateContext;
  failure: LongInt = 2;

procedure Fail(const words: string);
begin
  WriteLn(StdErr, words);
  Halt(failure);
end;

{ The result of a call tells whether it failed, the code why. }
procedure Demand(done: Boolean; const step: string);
begin
  if done then Exit;
  warning(nil, 'host', context^.ErrorCode, nil);
  Fail(step + ': code ' + IntToStr(context^.ErrorCode));
end;

procedure LoadSet(const directory: AnsiString);
var
  found: LongInt;
begin
  if Length(directory) > High(context^.DataDir) then Fail('too long: ' + string(directory));
  StrPLCopy(context^.DataDir, directory, High(context^.DataDir));
  StrPLCopy(context^.UserDir, directory, High(context^.UserDir));
  StrPCopy(context^.FileBase, 'SAMPLE');
  context^.UseEngine := 1;
  {$IFDEF MSWINDOWS}
  context^.EngineModule := Pointer(LoadLibraryA('tolvex'));
  {$ELSE}
  context^.EngineModule := LoadPartnerLibrary('tolvex');
  if context^.EngineModule = nil then Fail(string(PartnerLibraryError()));
  {$ENDIF}
  found := 0;
  Demand(ReadDefFile(context) = 1, 'defaults');
  Demand(OpenAllFiles(context, @found) = 1, 'tariff set');
  Demand(ReadDiscFile(context) = 1, 'discounts');
  Demand(OpenLevelFile(context, 'SAMPLE.LVL') = 1, 'level file');
  Demand(GetTolvexAddresses(context, 0) = 1, 'engine');
  Demand(InitializeTolvexdll(context) = 1, 'engine');
  context^.ErrorCode := 0;
end;

procedure EnterLine(line: LongInt; const freight_class, pounds: AnsiString);
var
  text: array[0..6] of AnsiChar; { VerWeight reads 7 bytes of the text. }
begin
  FillChar(text, SizeOf(text), 0);
  Demand(Length(pounds) <= High(text), 'weight');
  StrPLCopy(text, pounds, High(text));
  Demand(VerClass(context, PAnsiChar(freight_class), line, 0) = 1, 'class');
  Demand(VerWeight(context, text, line) = 1, 'weight');
end;

procedure EnterShipment;
begin
  StrPCopy(context^.OrigZip, '30303');
  StrPCopy(context^.OrigCity, 'Atlanta');
  StrPCopy(context^.OrigState, 'GA');
  StrPCopy(context^.DestZip, '60601');
  StrPCopy(context^.DestCity, 'Chicago');
  StrPCopy(context^.DestState, 'IL');
  context^.OrigTerritory := 'B';
  context^.DestTerritory := 'B';
  Demand((VerOrigZip(context) = 1) and (VerDestZip(context) = 1), 'postal codes');
  Demand(VerTerritory(context) = 1, 'territory');
  Demand((GetTolvexBse(context) = 1) and (GetTolvexTariffName(context) = 1), 'tariff');
  SetClassesAndWeights(context, 1, 0);
  EnterLine(0, '70', '1205');
  EnterLine(1, '100', '695');
  context^.DefRecord.DiscountOn := 1;
  context^.Profile.DiscModeP := 1; { the values entered here are the discount }
  StrPCopy(context^.EntryDiscountPercent, '45.5');
end;

{ A field's text up to its first zero byte, which a field that is filled does not have. }
function Text(const field: array of AnsiChar): string;
var
  i: Integer;
begin
  Result := '';
  for i := 0 to High(field) do
  begin
    if field[i] = #0 then Break;
    Result := Result + field[i];
  end;
  Result := Trim(Result);
end;

procedure PrintBill;
var
  line: Integer;
begin
  for line := 0 to 1 do
    WriteLn('line ', Text(context^.LineClass[line]), ' ', Text(context^.LineWeight[line]), ' ',
      Text(context^.LineRateText[line]), ' ', Text(context^.LineChargeText[line]));
  WriteLn('deficit ', Text(context^.ExtraWeightText), ' ', Text(context^.ExtraRateText), ' ',
    Text(context^.ExtraChargeText));
  WriteLn('gross ', Text(context^.GrossChargeText));
  WriteLn('discount ', Text(context^.DiscountPctText), ' ', Text(context^.DiscountAmountText));
  WriteLn('net ', Text(context^.NetChargeText));
end;

begin
  if ParamCount <> 1 then Fail('usage: host DIRECTORY');
  New(context);
  FillChar(context^, SizeOf(context^), 0);
  LoadSet(IncludeTrailingPathDelimiter(ParamStr(1)));
  failure := 1;
  EnterShipment;
  LoadDiscounts(context, nil, 0);
  Demand(RateShipment(context, 0, 0) = 0, 'rating');
  PrintBill;
  EndTolvexdll(context);
  CloseAllFiles(context);
  Dispose(context);
end.
