// The walk of JScript's Enumerator over collections of the component and the kit.
var kit = new ActiveXObject("Kelos.HostKit");
var workset = kit.Open(WScript.Arguments(0));
var items = new ActiveXObject("Tessera.ValueItems");
items.AddNew("a", "");
items.AddNew("b", "");

var walked = "";
for (var walk = new Enumerator(items); !walk.atEnd(); walk.moveNext())
    walked += walk.item().Value(0);
walk.moveFirst();
walked += walk.item().Value(0) + items(2).Value(0);
for (walk = new Enumerator(kit.Documents); !walk.atEnd(); walk.moveNext())
    walked += " " + walk.item().Name;
WScript.Echo(walked);
